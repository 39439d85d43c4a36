#pragma once

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/Cursor.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace Oru::TestSupport {

/// A cursor on nothing that notes what is bound and what is read, as "name type", in order. Every column holds
/// a number of 10 or the text "10" unless a test says otherwise, and none is NULL.
class RecordingCursor : public Common::Databases::Cursor {
 public:
  using Cursor::Bind;

  /// What the columns hold that don't hold 10.
  std::map<std::string, int64_t> numbers;

  /// @param failing  which of the calls is refused, from 1; 0 for none
  explicit RecordingCursor(std::size_t failing = 0) : mFailing(failing) {}

  const std::vector<std::string>& Calls() const { return mCalls; }

  int32_t GetColumnsCount() override { return 0; }
  std::string GetColumnName(int32_t) const override { return {}; }
  int32_t GetColumnIndex(const std::string&) const override { return -1; }
  bool IsOpened() const override { return true; }
  bool IsNull(const std::string&) const override { return false; }

  // What the tables call are the getters below, and never these.
  bool Get(const std::string&, int64_t&) const override { return false; }
  bool Get(const std::string&, uint64_t&) const override { return false; }
  bool Get(const std::string&, int32_t&) const override { return false; }
  bool Get(const std::string&, uint32_t&) const override { return false; }
  bool Get(const std::string&, double&) const override { return false; }
  bool Get(const std::string&, bool&) const override { return false; }
  bool Get(const std::string&, std::string&) const override { return false; }
  int32_t Get(const std::string&, uint8_t**) const override { return -1; }

  int64_t GetInt64(const std::string& name) const override { return Read(name, "int64"); }
  uint64_t GetUInt64(const std::string& name) const override {
    return static_cast<uint64_t>(Read(name, "uint64"));
  }
  int32_t GetInt32(const std::string& name) const override {
    return static_cast<int32_t>(Read(name, "int32"));
  }
  uint32_t GetUInt32(const std::string& name) const override {
    return static_cast<uint32_t>(Read(name, "uint32"));
  }
  double GetDouble(const std::string& name) const override {
    return static_cast<double>(Read(name, "double"));
  }
  bool GetBoolean(const std::string& name) const override { return Read(name, "bool") != 0; }
  std::string GetString(const std::string& name) const override { return std::to_string(Read(name, "text")); }

  bool Bind(const std::string& name, int64_t) override { return Note(name, "int64"); }
  bool Bind(const std::string& name, uint64_t) override { return Note(name, "uint64"); }
  bool Bind(const std::string& name, int32_t) override { return Note(name, "int32"); }
  bool Bind(const std::string& name, uint32_t) override { return Note(name, "uint32"); }
  bool Bind(const std::string& name, double) override { return Note(name, "double"); }
  bool Bind(const std::string& name, bool) override { return Note(name, "bool"); }
  bool Bind(const std::string& name, const std::string&) override { return Note(name, "text"); }
  bool Bind(const std::string& name, const uint8_t*, int32_t) override { return Note(name, "bytes"); }
  bool Bind(const std::string& name) override { return Note(name, "null"); }

  int32_t GetTotalItemsCount() const override { return -1; }
  void Close() override {}
  void Reset() override {}

 private:
  int64_t Read(const std::string& name, const char* type) const {
    if (!Note(name, type)) throw Common::Databases::ArgumentException();
    const auto found = numbers.find(name);
    return found == numbers.end() ? 10 : found->second;
  }
  bool Note(const std::string& name, const char* type) const {
    mCalls.push_back(name + ' ' + type);
    return mCalls.size() != mFailing;
  }

  const std::size_t mFailing;
  mutable std::vector<std::string> mCalls;
};

}  // namespace Oru::TestSupport
