#pragma once

#include "Oru/Common/Databases/Sqlite/TableSqlite.h"

// The templates of one table class are compiled once, in the library of that class: its header says
// ORU_TABLE_TEMPLATES(extern, Read, Written) and its source ORU_TABLE_TEMPLATES(, Read, Written), both
// outside any namespace. Tables that read the same type share the view's templates: one of them
// says ORU_VIEW_TEMPLATES, and each says ORU_WRITER_TEMPLATES.

// NOLINTBEGIN(bugprone-macro-parentheses): a keyword or a template's argument can't be in parentheses.
#define ORU_VIEW_TEMPLATES(EXTERN, READ)                                                \
  EXTERN template class Oru::Common::Databases::Sqlite::ObjectCursorSqlite<READ, READ>; \
  EXTERN template class Oru::Common::Databases::Sqlite::ViewStatementGenerator<READ>;   \
  EXTERN template class Oru::Common::Databases::Sqlite::ViewSqlite<READ>;

#define ORU_WRITER_TEMPLATES(EXTERN, READ, WRITTEN)                                             \
  EXTERN template class Oru::Common::Databases::Sqlite::TableStatementGenerator<READ, WRITTEN>; \
  EXTERN template class Oru::Common::Databases::Sqlite::TableSqlite<READ, WRITTEN>;

// For a table that writes what it reads.
#define ORU_ENTITY_TABLE_TEMPLATES(EXTERN, ENTITY) \
  ORU_VIEW_TEMPLATES(EXTERN, ENTITY)               \
  ORU_WRITER_TEMPLATES(EXTERN, ENTITY, ENTITY)

// For a table that writes a wrapper of what it reads.
#define ORU_TABLE_TEMPLATES(EXTERN, READ, WRITTEN)                                         \
  ORU_VIEW_TEMPLATES(EXTERN, READ)                                                         \
  EXTERN template class Oru::Common::Databases::Sqlite::ObjectCursorSqlite<READ, WRITTEN>; \
  ORU_WRITER_TEMPLATES(EXTERN, READ, WRITTEN)
// NOLINTEND(bugprone-macro-parentheses)
