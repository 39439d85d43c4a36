#pragma once

// What most tests include: GoogleTest, the standard library, and the access layer with what tests use beside it.
// Builds with sanitizers have it precompiled.

#include "Oru/Common/Databases/ArgumentException.h"
#include "Oru/Common/Databases/InvalidOperationException.h"
#include "Oru/Common/Databases/NotSupportedException.h"
#include "Oru/Common/Databases/ObjectClosedException.h"
#include "Oru/Common/Databases/Sqlite/ChangeListener.h"
#include "Oru/Common/Databases/Sqlite/CursorSqlite.h"
#include "Oru/Common/Databases/Sqlite/DatabaseSqlite.h"
#include "Oru/Common/Databases/Sqlite/QuerySqlite.h"
#include "Oru/Common/Databases/Sqlite/ReadGuard.h"
#include "Oru/Common/Databases/Sqlite/SavepointGuard.h"
#include "Oru/Common/Databases/Sqlite/TransactionGuard.h"

#include "support/CapturedLog.h"
#include "support/SqlValues.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <tuple>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>
