#pragma once

// What the library offers to programs. Its sources are compiled with all else hidden.
#ifdef __ELF__
#define ORU_COMMON_DATABASE_EXPORT __attribute__((visibility("default")))
#else
#define ORU_COMMON_DATABASE_EXPORT
#endif
