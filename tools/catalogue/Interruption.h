#pragma once

namespace Catalogue {

/// Ctrl-C as a question: long work asks now and then whether it is to end.
class Interruption {
 public:
  Interruption() = delete;

  /// From now on the first SIGINT or SIGTERM is noted only. The second ends the program, as ever.
  static void Watch();
  static bool IsAsked();
};

}  // namespace Catalogue
