// A command line of any text, given in UTF-8.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "app/startup.h"
#include "platform/text.h"

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillmere;
  const std::u16string line =
      platform::fromUtf8(std::string_view(reinterpret_cast<const char*>(data), size));
  const LaunchArguments arguments = parseCommandLine(line);
  require(arguments.printChild == line.starts_with(u"--print"));
  require(arguments.viewerRole == line.starts_with(u"--viewer"));
  require(arguments.filePath.size() < 260);
  require(line.find(arguments.filePath) != std::u16string::npos);
  return 0;
}
