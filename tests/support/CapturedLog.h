#pragma once

#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace Oru::TestSupport {

/// A log stream for a database under test, and what has been written to it.
class CapturedLog {
 public:
  std::shared_ptr<std::ostream> Stream() const { return mStream; }
  std::string Text() const { return mStream->str(); }
  std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    std::istringstream text(Text());
    for (std::string line; std::getline(text, line);)
      lines.push_back(line);
    return lines;
  }
  bool Contains(const std::string& text) const { return Text().find(text) != std::string::npos; }
  void Clear() { mStream->str({}); }

 private:
  std::shared_ptr<std::ostringstream> mStream = std::make_shared<std::ostringstream>();
};

}  // namespace Oru::TestSupport
