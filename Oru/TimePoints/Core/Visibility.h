#pragma once

// A header-only type that names an exported template must be visible itself: with a hidden argument the
// template's code would be hidden too, in whichever library it is compiled.
#define ORU_TIMEPOINTS_VISIBLE __attribute__((visibility("default")))
