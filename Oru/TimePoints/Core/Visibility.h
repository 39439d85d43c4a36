#pragma once

// Makes a header-only type or operation visible outside the library that it is compiled into. Two need it:
//   - a type that names an exported template: with a hidden argument the template's code would be hidden too;
//   - an inline operation that libOru.DataModel.Database.so offers compiled as well. It is marked itself,
//   since
//     its class has no say in the visibility of inline operations.
#define ORU_TIMEPOINTS_VISIBLE __attribute__((visibility("default")))
