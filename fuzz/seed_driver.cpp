// Runs every seed of one fuzz target as a test of its own.
#include <gtest/gtest.h>

#include <cctype>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

class SeedTest : public testing::Test {
 public:
  explicit SeedTest(std::filesystem::path seed) : seed_(std::move(seed)) {}

  // Passes if it returns: the sanitizers end the program on a fault.
  void TestBody() override {
    std::ifstream file(seed_, std::ios::binary);
    ASSERT_TRUE(file) << seed_;
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()),
        0);
  }

 private:
  std::filesystem::path seed_;
};

std::string testName(const std::filesystem::path& seed) {
  std::string name = seed.filename().string();
  for (char& letter : name) {
    if (std::isalnum(static_cast<unsigned char>(letter)) == 0) letter = '_';
  }
  return name;
}

}  // namespace

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  for (const auto& entry : std::filesystem::directory_iterator(SEED_FOLDER)) {
    const std::filesystem::path seed = entry.path();
    testing::RegisterTest("FuzzSeeds_" SEED_SUITE, testName(seed).c_str(), nullptr, nullptr,
                          __FILE__, __LINE__,
                          [seed]() -> testing::Test* { return new SeedTest(seed); });
  }
  return RUN_ALL_TESTS();
}
