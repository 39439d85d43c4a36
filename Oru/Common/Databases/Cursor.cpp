#include "Oru/Common/Databases/Cursor.h"

#include "Oru/Common/Databases/ArgumentException.h"

namespace Oru::Common::Databases {

namespace {

template <class T>
T ReadOrThrow(const Cursor& cursor, const std::string& name) {
  T value{};
  if (!cursor.Get(name, value)) throw ArgumentException();
  return value;
}

}  // namespace

Cursor::~Cursor() = default;

int64_t Cursor::GetInt64(const std::string& name) const {
  return ReadOrThrow<int64_t>(*this, name);
}

uint64_t Cursor::GetUInt64(const std::string& name) const {
  return ReadOrThrow<uint64_t>(*this, name);
}

int32_t Cursor::GetInt32(const std::string& name) const {
  return ReadOrThrow<int32_t>(*this, name);
}

uint32_t Cursor::GetUInt32(const std::string& name) const {
  return ReadOrThrow<uint32_t>(*this, name);
}

double Cursor::GetDouble(const std::string& name) const {
  return ReadOrThrow<double>(*this, name);
}

bool Cursor::GetBoolean(const std::string& name) const {
  return ReadOrThrow<bool>(*this, name);
}

std::string Cursor::GetString(const std::string& name) const {
  return ReadOrThrow<std::string>(*this, name);
}

int32_t Cursor::GetBytes(const std::string& name, uint8_t** out) const {
  const int32_t length = Get(name, out);
  if (length == -1) throw ArgumentException();
  return length;
}

}  // namespace Oru::Common::Databases
