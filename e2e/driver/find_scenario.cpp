#include "driver/find_scenario.h"

namespace quillmere::e2e {
namespace {

::testing::AssertionResult textBecomes(HWND control, const std::wstring& wanted) {
  const std::wstring seen = settled([&] { return controlText(control); }, wanted);
  if (seen == wanted) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "seen " << ::testing::PrintToString(seen) << ", wanted "
                                       << ::testing::PrintToString(wanted);
}

}  // namespace

void FindScenario::openFindBar() const {
  press('F', kCtrl);
  ASSERT_TRUE(eventually([&] { return barShown(); }));
  ASSERT_TRUE(keyboardGoesTo(kField));
}

void FindScenario::lookFor(const std::wstring& text) const {
  openFindBar();
  type(text);
  ASSERT_TRUE(fieldBecomes(text));
}

void FindScenario::clickControl(int id) const {
  const RECT rect = windowRect(control(id));
  click({(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2});
}

bool FindScenario::isChecked(int id) const {
  return SendMessageW(control(id), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

::testing::AssertionResult FindScenario::checkBecomes(int id, bool wanted) const {
  if (eventually([&] { return isChecked(id) == wanted; })) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << id << (wanted ? " was not checked" : " stayed checked");
}

::testing::AssertionResult FindScenario::fieldBecomes(const std::wstring& wanted) const {
  return textBecomes(control(kField), wanted);
}

::testing::AssertionResult FindScenario::hitsBecome(const std::wstring& wanted) const {
  return textBecomes(control(kHits), wanted);
}

::testing::AssertionResult FindScenario::keyboardGoesTo(int id) const {
  // The bar has no controls before it is shown.
  const auto wanted = [&] { return id == 0 ? window : control(id); };
  const auto arrived = [&] { return wanted() != nullptr && focusOf(window) == wanted(); };
  if (eventually(arrived)) return ::testing::AssertionSuccess();
  const HWND seen = focusOf(window);
  return ::testing::AssertionFailure()
         << "the keyboard is with " << ::testing::PrintToString(classOf(seen)) << " "
         << GetDlgCtrlID(seen) << ", wanted " << id;
}

std::uint32_t hitColor() {
  return mixed(0xFFDC00, 0x78, kPaper);
}

std::uint32_t currentHitColor() {
  return mixed(0x9B32C8, 0xB4, kPaper);
}

}  // namespace quillmere::e2e
