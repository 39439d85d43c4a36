#pragma once

#include "Oru/Common/Databases/Sqlite/TableInstantiation.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace Oru::TestSupport {

/// A small entity for tests of the framework.
struct Note {
  int64_t key = -1;
  std::string text;
  /// Stored as NULL, by leaving the parameter unbound, when absent.
  std::optional<int64_t> weight;
};

/// A view or table of notes whose names and clauses a test sets as it likes.
/// @tparam Base  the view or table class of the framework
template <class Base>
class Described : public Base {
 public:
  using Base::Base;
  using Base::ReadFromCursor;

  std::string tableName = "Note";
  std::vector<std::string> columns = {"key", "text", "weight"};
  /// Empty for the same as `columns`.
  std::vector<std::string> selectColumns;
  /// By the index of the select column; empty or too short for none.
  std::vector<std::string> aliases;
  /// Empty for the table's name.
  std::string fromClause;
  std::string whereClause, groupByClause, joinClause;
  /// The flag of each row that was read.
  std::vector<bool> lazyFlags;

  void SetSelect(const std::string& text) { this->selectStatement = text; }
  void SetCreate(const std::string& text) { this->createStatement = text; }

  const std::string& GetTableName() const override { return tableName; }
  const std::string& GetColumnName(int32_t index) const override { return columns.at(AsIndex(index)); }
  int32_t GetColumnsCount() const override { return static_cast<int32_t>(columns.size()); }
  const std::string& GetObjectIdColumnName() const override { return columns.front(); }
  const std::string& GetSelectColumnName(int32_t index) const override {
    return selectColumns.empty() ? GetColumnName(index) : selectColumns.at(AsIndex(index));
  }
  int32_t GetSelectColumnsCount() const override {
    return selectColumns.empty() ? GetColumnsCount() : static_cast<int32_t>(selectColumns.size());
  }
  const std::string& GetSelectColumnAlias(int32_t index) const override {
    return AsIndex(index) < aliases.size() ? aliases[AsIndex(index)] : this->EmptyText();
  }
  const std::string& GetFromClause() const override { return fromClause.empty() ? tableName : fromClause; }
  const std::string& GetWhereClause() const override { return whereClause; }
  const std::string& GetGroupByClause() const override { return groupByClause; }
  const std::string& GetJoinClause() const override { return joinClause; }

  void ReadFromCursor(const Common::Databases::Cursor& cursor, Note& note, bool lazy) override {
    lazyFlags.push_back(lazy);
    note.key = cursor.GetInt64("key");
    note.text = cursor.GetString("text");
    note.weight.reset();
    if (!cursor.IsNull("weight")) note.weight = cursor.GetInt64("weight");
  }

 private:
  static std::size_t AsIndex(int32_t index) { return static_cast<std::size_t>(index); }
};

using NoteView = Described<Common::Databases::Sqlite::ViewSqlite<Note>>;

/// A table of notes, ready for use with its default names.
class NoteTable : public Described<Common::Databases::Sqlite::TableSqlite<Note, Note>> {
 public:
  static constexpr const char* CreateText =
      "CREATE TABLE Note (key integer primary key autoincrement, text text not null unique, weight integer);";

  NoteTable() { GenerateStatements(); }
  explicit NoteTable(Common::Databases::Sqlite::DatabaseSqlite& db) : Described(db) { GenerateStatements(); }

  /// Takes names and clauses that were changed into the statements.
  void Regenerate(bool isAutoIncremented = true) {
    mAutoIncrementedId = isAutoIncremented;
    GenerateStatements();
  }

  bool BindToCursor(Common::Databases::Cursor& cursor, Note& note) override {
    if (!mAutoIncrementedId && !cursor.Bind("key", note.key)) return false;
    if (note.weight && !cursor.Bind("weight", *note.weight)) return false;
    if (note.text == "throw") throw std::runtime_error("a note that can't be bound");
    return cursor.Bind("text", note.text);
  }
  void SetObjectId(Note& note, int64_t key) override {
    if (note.text == "keyless") throw std::runtime_error("a note that takes no key");
    note.key = key;
  }
  int64_t GetObjectId(Note& note) const override { return note.key; }
};

}  // namespace Oru::TestSupport
