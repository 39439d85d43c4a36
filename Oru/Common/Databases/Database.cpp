#include "Oru/Common/Databases/Database.h"

namespace Oru::Common::Databases {

Database::Database() = default;

Database::Database(const std::string& connection) : mConnection(connection) {}

Database::~Database() = default;

}  // namespace Oru::Common::Databases
