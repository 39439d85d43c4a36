#include "InterchangeFields.h"

#include "Oru/BusinessEntityModel/Edits/DapOperatorMetadataProfile.h"
#include "Oru/BusinessEntityModel/Edits/DapOperatorTimecodeRegen.h"
#include "Oru/BusinessEntityModel/Edits/Sequence.h"
#include "Oru/DataModel/MediaAssets/AnglesDapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroup.h"
#include "Oru/DataModel/MediaAssets/AnglesMediaAssetGroupItem.h"
#include "Oru/DataModel/MediaAssets/Annotation.h"
#include "Oru/DataModel/MediaAssets/AudioEssence.h"
#include "Oru/DataModel/MediaAssets/DapOperatorMetadataProfile.h"
#include "Oru/DataModel/MediaAssets/DataEssence.h"
#include "Oru/DataModel/MediaAssets/MediaResource.h"
#include "Oru/DataModel/MediaAssets/Stream.h"
#include "Oru/DataModel/MediaAssets/Track.h"
#include "Oru/DataModel/MediaAssets/TrackChannelToRemove.h"
#include "Oru/DataModel/MediaAssets/VideoEssence.h"

#include <exception>
#include <set>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace Catalogue {

namespace {

namespace BaseTypes = Oru::BusinessEntityModel::BaseTypes;
namespace Edits = Oru::BusinessEntityModel::Edits;
using namespace Oru::DataModel::MediaAssets;

// `Fields` lists the fields of an entity once for both directions: with a `Writer` it makes the JSON, with a
// `Reader` it sets the entity.

/// Makes the JSON of an entity.
class Writer {
 public:
  /// A value, which is set by the function.
  template <class T, class Set>
  void Value(const char* name, const T& value, const Set&) {
    mJson[name] = ToJson(value);
  }
  /// A value that is a part of the entity and is set in place.
  template <class T>
  void Part(const char* name, const T& part) {
    mJson[name] = ToJson(part);
  }
  /// What decides the class of the entity, and so can't be set any more.
  template <class T>
  void Kind(const char* name, const T& value) {
    mJson[name] = ToJson(value);
  }
  /// An entity that may be missing, then null.
  template <class T, class Set>
  void Entity(const char* name, const std::shared_ptr<T>& entity, const Set&) {
    if (entity) mJson[name] = Of(*entity);
  }
  /// Entities in order. `make` gives a new one for its JSON, and `add` takes it, once it is set.
  template <class List, class Make, class Add>
  void Entities(const char* name, List& entities, const Make&, const Add&) {
    Json list = Json::array();
    for (auto& entity : entities)
      list.push_back(Of(*entity));
    mJson[name] = std::move(list);
  }

  template <class T>
  static Json Of(T& entity) {
    Writer writer;
    Fields(writer, entity);
    return std::move(writer.mJson);
  }

 private:
  Json mJson = Json::object();
};

/// Sets an entity as its JSON says.
class Reader {
 public:
  template <class T, class Set>
  void Value(const char* name, const T&, const Set& set) {
    const Json* json = Find(name);
    if (json == nullptr) return;
    Naming(name, [&] {
      T value{};
      FromJson(*json, value);
      set(std::move(value));
    });
  }
  template <class T>
  void Part(const char* name, T& part) {
    if (const Json* json = Find(name)) Naming(name, [&] { FromJson(*json, part); });
  }
  template <class T>
  void Kind(const char* name, const T&) {
    Find(name);
  }
  template <class T, class Set>
  void Entity(const char* name, const std::shared_ptr<T>&, const Set& set) {
    const Json* json = Find(name);
    if (json == nullptr || json->is_null()) return;
    auto entity = std::make_shared<T>();
    Read(*json, mUnknown, mPath + name, *entity);
    Naming(name, [&] { set(std::move(entity)); });
  }
  template <class List, class Make, class Add>
  void Entities(const char* name, List&, const Make& make, const Add& add) {
    const Json* list = Find(name);
    if (list == nullptr) return;
    if (!list->is_array()) throw std::invalid_argument(mPath + name + ": an array is expected");
    for (const Json& json : *list) {
      const std::string element = name + ("[" + std::to_string(&json - &list->front())) + "]";
      decltype(make(json)) entity;
      Naming(element, [&] { entity = make(json); });
      Read(json, mUnknown, mPath + element, *entity);
      Naming(element, [&] { add(std::move(entity)); });
    }
  }

  /// @param path  of the entity, for messages
  template <class T>
  static void Read(const Json& json, UnknownFields unknown, const std::string& path, T& entity) {
    if (!json.is_object()) throw std::invalid_argument(path + ": an object is expected");
    Reader reader(json, unknown, path + ".");
    Fields(reader, entity);
    if (unknown == UnknownFields::PassOver) return;
    for (const auto& field : json.items()) {
      if (reader.mKnown.count(field.key()) == 0)
        throw std::invalid_argument(path + ": there is no field '" + field.key() + "'");
    }
  }

 private:
  Reader(const Json& json, UnknownFields unknown, std::string path)
      : mJson(json), mUnknown(unknown), mPath(std::move(path)) {}

  const Json* Find(const char* name) {
    mKnown.insert(name);
    const auto found = mJson.find(name);
    return found == mJson.end() ? nullptr : &*found;
  }

  template <class Action>
  void Naming(const std::string& name, const Action& action) const {
    try {
      action();
    } catch (const std::exception& reason) {
      throw std::invalid_argument(mPath + name + ": " + reason.what());
    }
  }

  const Json& mJson;
  const UnknownFields mUnknown;
  const std::string mPath;
  std::set<std::string> mKnown;
};

/// A field with a getter and a setter.
template <class Exchange, class Entity, class Owner, class Got, class Set>
void Field(Exchange& exchange, const char* name, Entity& entity, Got (Owner::*get)() const,
           void (Owner::*set)(Set)) {
  using Value = std::decay_t<Got>;
  exchange.Value(name, static_cast<const Value&>((entity.*get)()),
                 [&](Value value) { (entity.*set)(std::move(value)); });
}

// Entities that a list makes whatever their JSON says.
template <class T>
std::shared_ptr<T> MakeNew(const Json&) {
  return std::make_shared<T>();
}

template <class Exchange>
void Fields(Exchange& x, DapOperatorMetadataProfile& profile) {
  using Profile = DapOperatorMetadataProfile;
  Field(x, "server", profile, &Profile::ServerId, &Profile::ServerId);
  Field(x, "page", profile, &Profile::Page, &Profile::Page);
  Field(x, "bank", profile, &Profile::Bank, &Profile::Bank);
  Field(x, "row", profile, &Profile::Row, &Profile::Row);
  Field(x, "camera", profile, &Profile::Camera, &Profile::Camera);
  Field(x, "umId", profile, &Profile::UmId, &Profile::UmId);
  Field(x, "varId", profile, &Profile::VarId, &Profile::VarId);
  Field(x, "rating", profile, &Profile::Rating, &Profile::Rating);
  Field(x, "archiveStatus", profile, &Profile::ArchiveStatus, &Profile::ArchiveStatus);
  Field(x, "userTimecodeType", profile, &Profile::UserTimecodeType, &Profile::UserTimecodeType);
  Field(x, "primaryTimecode", profile, &Profile::PrimaryTimecode, &Profile::PrimaryTimecode);
  Field(x, "userTimecode", profile, &Profile::UserTimecode, &Profile::UserTimecode);
  Field(x, "todTimecode", profile, &Profile::TodTimecode, &Profile::TodTimecode);
  Field(x, "icon", profile, &Profile::Icon, &Profile::Icon);
  Field(x, "color", profile, &Profile::Color, &Profile::Color);
  Field(x, "fillAndKeyType", profile, &Profile::FillAndKeyType, &Profile::FillAndKeyType);
  Field(x, "fillAndKeyClip", profile, &Profile::FillAndKeyMediaAssetId, &Profile::FillAndKeyMediaAssetId);
  Field(x, "keywords", profile, &Profile::Keywords, &Profile::Keywords);
  Field(x, "userProtected", profile, &Profile::IsUserProtected, &Profile::UserProtected);
  Field(x, "interfaceProtected", profile, &Profile::IsDapUiProtected, &Profile::DapUIProtected);
}

template <class Exchange>
void Fields(Exchange& x, Annotation& annotation) {
  Field(x, "type", annotation, &Annotation::Type, &Annotation::Type);
  Field(x, "data", annotation, &Annotation::Data, &Annotation::Data);
  Field(x, "bounds", annotation, &Annotation::TimeBounds, &Annotation::TimeBounds);
  x.Part("metadata", annotation.Metadata());
}

template <class Exchange>
void Fields(Exchange& x, TrackChannelToRemove& channel) {
  using Channel = TrackChannelToRemove;
  Field(x, "stream", channel, &Channel::Stream, &Channel::Stream);
  Field(x, "essence", channel, &Channel::EssenceNr, &Channel::EssenceNr);
  Field(x, "channel", channel, &Channel::ChannelNr, &Channel::ChannelNr);
}

template <class Exchange>
void Fields(Exchange& x, Track& track) {
  Field(x, "id", track, &Track::Id, &Track::Id);
  Field(x, "name", track, &Track::Name, &Track::Name);
  x.Entities("channels", track.Channels(), MakeNew<TrackChannelToRemove>,
             [&](auto channel) { track.Channels().push_back(std::move(channel)); });
}

template <class Exchange>
void Fields(Exchange& x, VideoEssence& video) {
  Field(x, "codec", video, &VideoEssence::VideoCodec, &VideoEssence::VideoCodec);
  Field(x, "bitRate", video, &VideoEssence::BitRate, &VideoEssence::BitRate);
  Field(x, "bitRateMode", video, &VideoEssence::BitRateMode, &VideoEssence::BitRateMode);
  Field(x, "bitDepth", video, &VideoEssence::BitDepth, &VideoEssence::BitDepth);
  Field(x, "frameRate", video, &VideoEssence::FrameRate, &VideoEssence::FrameRate);
  Field(x, "width", video, &VideoEssence::Width, &VideoEssence::Width);
  Field(x, "height", video, &VideoEssence::Height, &VideoEssence::Height);
  Field(x, "aspectRatio", video, &VideoEssence::AspectRatio, &VideoEssence::AspectRatio);
  Field(x, "chromaSubSampling", video, &VideoEssence::ChromaSubSampling, &VideoEssence::ChromaSubSampling);
  Field(x, "colorSpace", video, &VideoEssence::ColorSpace, &VideoEssence::ColorSpace);
  Field(x, "scanMode", video, &VideoEssence::ScanMode, &VideoEssence::ScanMode);
  Field(x, "boxing", video, &VideoEssence::Boxing, &VideoEssence::Boxing);
  Field(x, "fourCC", video, &VideoEssence::FourCC, &VideoEssence::FourCC);
}

template <class Exchange>
void Fields(Exchange& x, AudioEssence& audio) {
  Field(x, "codec", audio, &AudioEssence::AudioCodec, &AudioEssence::AudioCodec);
  Field(x, "bitRate", audio, &AudioEssence::BitRate, &AudioEssence::BitRate);
  Field(x, "bitRateMode", audio, &AudioEssence::BitRateMode, &AudioEssence::BitRateMode);
  Field(x, "bitDepth", audio, &AudioEssence::BitDepth, &AudioEssence::BitDepth);
  Field(x, "sampleRate", audio, &AudioEssence::SampleRate, &AudioEssence::SampleRate);
  Field(x, "fourCC", audio, &AudioEssence::FourCC, &AudioEssence::FourCC);
}

std::string KindOf(const Essence& essence) {
  switch (essence.GetType()) {
    case Essence::Type::Video:
      return "video";
    case Essence::Type::Audio:
      return "audio";
    case Essence::Type::Data:
      return "data";
  }
  throw std::invalid_argument("there is no such kind of essence");
}

std::unique_ptr<Essence> MakeEssence(const Json& json) {
  const std::string kind = json.is_object() ? json.value("kind", "") : "";
  if (kind == "video") return std::make_unique<VideoEssence>();
  if (kind == "audio") return std::make_unique<AudioEssence>();
  if (kind == "data") return std::make_unique<DataEssence>();
  throw std::invalid_argument("'kind' must be 'video', 'audio' or 'data'");
}

template <class Exchange>
void Fields(Exchange& x, Essence& essence) {
  x.Kind("kind", KindOf(essence));
  Field(x, "channels", essence, &Essence::ChannelCount, &Essence::ChannelCount);
  if (auto* video = dynamic_cast<VideoEssence*>(&essence)) Fields(x, *video);
  if (auto* audio = dynamic_cast<AudioEssence*>(&essence)) Fields(x, *audio);
  x.Part("metadata", *essence.Metadata());
}

template <class Exchange>
void Fields(Exchange& x, Stream& stream) {
  Field(x, "id", stream, &Stream::Id, &Stream::Id);
  Field(x, "format", stream, &Stream::Format, &Stream::Format);
  x.Part("bounds", stream.Timebounds());
  x.Entities("essences", stream.Essences(), MakeEssence,
             [&](auto essence) { stream.Essences().Add(std::move(essence)); });
  x.Part("metadata", *stream.Metadata());
}

template <class Exchange>
void Fields(Exchange& x, MediaResource& resource) {
  Field(x, "id", resource, &MediaResource::Id, &MediaResource::Id);
  Field(x, "name", resource, &MediaResource::Name, &MediaResource::Name);
  Field(x, "format", resource, &MediaResource::GeneralFormat, &MediaResource::GeneralFormat);
  // A creation date sets the modification date too, so it comes first, as everywhere.
  Field(x, "created", resource, &MediaResource::CreationDate, &MediaResource::CreationDate);
  Field(x, "modified", resource, &MediaResource::ModificationDate, &MediaResource::ModificationDate);
  x.Part("bounds", resource.Timebounds());
  x.Entities("streams", resource.Streams(), MakeNew<Stream>,
             [&](auto stream) { resource.Streams().emplace_back(std::move(stream)); });
  x.Part("metadata", *resource.Metadata());
}

template <class Exchange>
void Fields(Exchange& x, MediaAsset& clip) {
  Field(x, "id", clip, &MediaAsset::Id, &MediaAsset::Id);
  Field(x, "type", clip, &MediaAsset::AssetType, &MediaAsset::AssetType);
  Field(x, "name", clip, &MediaAsset::Name, &MediaAsset::Name);
  Field(x, "description", clip, &MediaAsset::Description, &MediaAsset::Description);
  Field(x, "ancestor", clip, &MediaAsset::Ancestor, &MediaAsset::Ancestor);
  Field(x, "parent", clip, &MediaAsset::Parent, &MediaAsset::Parent);
  Field(x, "created", clip, &MediaAsset::CreationDate, &MediaAsset::CreationDate);
  Field(x, "modified", clip, &MediaAsset::ModificationDate, &MediaAsset::ModificationDate);
  x.Value("in", clip.InBoundary(), [&](const auto& mark) { clip.InBoundary(mark); });
  x.Value("out", clip.OutBoundary(), [&](const auto& mark) { clip.OutBoundary(mark); });
  x.Part("bounds", clip.PhysicalTimebounds());
  x.Entity("operator", clip.Metadata().Get<DapOperatorMetadataProfile>(),
           [&](auto profile) { clip.Metadata().Set(std::move(profile)); });
  x.Entities("annotations", clip.Annotations(), MakeNew<Annotation>,
             [&](auto annotation) { clip.Annotations().push_back(std::move(annotation)); });
  x.Entities("resources", clip.MediaResources(), MakeNew<MediaResource>,
             [&](auto resource) { clip.MediaResources().Insert(std::move(resource)); });
  x.Entities("tracks", clip.Tracks(), MakeNew<Track>,
             [&](auto track) { clip.Tracks().Insert(std::move(track)); });
  x.Part("metadata", clip.Metadata());
}

template <class Exchange>
void Fields(Exchange& x, AnglesDapOperatorMetadataProfile& profile) {
  using Profile = AnglesDapOperatorMetadataProfile;
  Field(x, "server", profile, &Profile::ServerId, &Profile::ServerId);
  Field(x, "page", profile, &Profile::Page, &Profile::Page);
  Field(x, "bank", profile, &Profile::Bank, &Profile::Bank);
  Field(x, "clip", profile, &Profile::Clip, &Profile::Clip);
}

template <class Exchange>
void Fields(Exchange& x, MediaAssetGroupItem& item) {
  x.Value("clip", item.MediaAsset(), [&](auto clip) { item.MediaAsset(std::move(clip)); });
  if (auto* angle = dynamic_cast<AnglesMediaAssetGroupItem*>(&item)) {
    Field(x, "angle", *angle, &AnglesMediaAssetGroupItem::Name, &AnglesMediaAssetGroupItem::Name);
  }
}

template <class Exchange>
void Fields(Exchange& x, MediaAssetGroup& group) {
  Field(x, "id", group, &MediaAssetGroup::Id, &MediaAssetGroup::Id);
  x.Kind("isAngles", dynamic_cast<AnglesMediaAssetGroup*>(&group) != nullptr);
  Field(x, "type", group, &MediaAssetGroup::Type, &MediaAssetGroup::Type);
  Field(x, "name", group, &MediaAssetGroup::Name, &MediaAssetGroup::Name);
  x.Entity("operator", group.Metadata().Get<AnglesDapOperatorMetadataProfile>(),
           [&](auto profile) { group.Metadata().Set(std::move(profile)); });
  x.Entities("items", group.Items(), MakeNew<AnglesMediaAssetGroupItem>,
             [&](auto item) { group.Items().push_back(std::move(item)); });
}

template <class Exchange>
void Fields(Exchange& x, Edits::DapOperatorTimecodeRegen& regeneration) {
  using Regen = Edits::DapOperatorTimecodeRegen;
  Field(x, "continueIn", regeneration, &Regen::ContinueIn, &Regen::ContinueIn);
  Field(x, "from", regeneration, &Regen::From, &Regen::From);
  Field(x, "reference", regeneration, &Regen::TimecodeRef, &Regen::TimecodeRef);
  Field(x, "output", regeneration, &Regen::In, &Regen::In);
}

template <class Exchange>
void Fields(Exchange& x, Edits::DapOperatorMetadataProfile& profile) {
  using Profile = Edits::DapOperatorMetadataProfile;
  Field(x, "server", profile, &Profile::ServerId, &Profile::ServerId);
  Field(x, "page", profile, &Profile::Page, &Profile::Page);
  Field(x, "bank", profile, &Profile::Bank, &Profile::Bank);
  Field(x, "row", profile, &Profile::Row, &Profile::Row);
  Field(x, "umId", profile, &Profile::UmId, &Profile::UmId);
  Field(x, "varId", profile, &Profile::VarId, &Profile::VarId);
  Field(x, "videoElements", profile, &Profile::VideoElementsCount, &Profile::VideoElementsCount);
  Field(x, "archiveStatus", profile, &Profile::ArchiveStatus, &Profile::ArchiveStatus);
  std::shared_ptr<Edits::DapOperatorTimecodeRegen> regeneration;
  if (profile.TimecodeRegen().HasValue()) {
    regeneration = std::make_shared<Edits::DapOperatorTimecodeRegen>(profile.TimecodeRegen().Value());
  }
  x.Entity("timecodeRegeneration", regeneration, [&](const auto& read) { profile.TimecodeRegen(*read); });
}

/// What edits and sequences have in common.
template <class Exchange, class Entity>
void AuthoredFields(Exchange& x, Entity& entity) {
  Field(x, "id", entity, &Entity::Id, &Entity::Id);
  Field(x, "name", entity, &Entity::Name, &Entity::Name);
  Field(x, "created", entity, &Entity::CreationDate, &Entity::CreationDate);
  Field(x, "createdBy", entity, &Entity::CreationOwner, &Entity::CreationOwner);
  Field(x, "modified", entity, &Entity::ModificationDate, &Entity::ModificationDate);
  Field(x, "modifiedBy", entity, &Entity::ModificationOwner, &Entity::ModificationOwner);
}

template <class Exchange>
void Fields(Exchange& x, Edits::Sequence& sequence) {
  using Edits::Sequence;
  AuthoredFields(x, sequence);
  Field(x, "version", sequence, &Sequence::Version, &Sequence::Version);
  Field(x, "at", sequence, &Sequence::GetTimePoint, &Sequence::SetTimePoint);
  Field(x, "duration", sequence, &Sequence::Duration, &Sequence::Duration);
  x.Entity("operator", sequence.Metadata().Get<Edits::DapOperatorMetadataProfile>(),
           [&](auto profile) { sequence.Metadata().Set(std::move(profile)); });
  x.Part("metadata", sequence.Metadata());
}

template <class Exchange>
void Fields(Exchange& x, Edits::Edit& edit) {
  AuthoredFields(x, edit);
  x.Entities(
      "sequences", edit.Sequences(), [](const Json&) { return std::make_unique<Edits::Sequence>(); },
      [&](auto sequence) { edit.Sequences().Add(std::move(sequence)); });
  x.Part("metadata", edit.Metadata());
}

}  // namespace

Json EntityToJson(MediaAsset& clip) {
  return Writer::Of(clip);
}

Json EntityToJson(MediaAssetGroup& group) {
  return Writer::Of(group);
}

Json EntityToJson(MediaResource& resource) {
  return Writer::Of(resource);
}

Json EntityToJson(Edits::Edit& edit) {
  return Writer::Of(edit);
}

MediaAsset ClipFromJson(const Json& json, UnknownFields unknown) {
  MediaAsset clip;
  Reader::Read(json, unknown, "clip", clip);
  return clip;
}

MediaResource ResourceFromJson(const Json& json, UnknownFields unknown) {
  MediaResource resource;
  Reader::Read(json, unknown, "resource", resource);
  return resource;
}

std::unique_ptr<MediaAssetGroup> GroupFromJson(const Json& json, UnknownFields unknown) {
  const bool isAngles = json.is_object() && json.contains("isAngles") && json["isAngles"] == true;
  std::unique_ptr<MediaAssetGroup> group;
  if (isAngles) {
    group = std::make_unique<AnglesMediaAssetGroup>();
  } else {
    group = std::make_unique<MediaAssetGroup>();
  }
  Reader::Read(json, unknown, "group", *group);
  return group;
}

Edits::Edit EditFromJson(const Json& json, UnknownFields unknown) {
  Edits::Edit edit;
  Reader::Read(json, unknown, "edit", edit);
  return edit;
}

}  // namespace Catalogue
