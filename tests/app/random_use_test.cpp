#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

#include "support/session_actions.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

class RandomUseTest : public SessionTest, public testing::WithParamInterface<unsigned> {};

TEST_P(RandomUseTest, KeepsTheSessionSound) {
  std::mt19937 random(GetParam());
  for (int round = 0; round < 10; ++round) {
    resetSession();
    platform::resetStandIn();
    platform::standIn().window.client = {320, 240};
    std::vector<std::uint8_t> bytes(600);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    ASSERT_EQ(playSessionActions(bytes.data(), bytes.size()), "") << "round " << round;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomUseTest, testing::Range(1u, 9u));

}  // namespace
}  // namespace quillmere::test
