#pragma once

// The wrappers that tables write refer to an entity that is constant to all but its table: a save sets the
// object id, and takes what belongs to the entity. Each wrapper is made from one that may be changed.
// Internal to the library.
namespace Oru::DataModel::MediaAssets::Database {

template <class Entity>
Entity& Changeable(const Entity& wrapped) {
  return const_cast<Entity&>(wrapped);
}

}  // namespace Oru::DataModel::MediaAssets::Database
