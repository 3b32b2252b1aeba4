#include "store/binder_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <vector>

#include "base/text_format.h"
#include "platform/process.h"
#include "platform/text.h"
#include "support/binder_texts.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char16_t* kPath = u"C:\\Lists\\Tax 2024.lst";
const std::string kMark = "\xEF\xBB\xBF";
const std::string kPlainHead = "# collapsed=0\r\n# bold=0\r\n";

BinderFile parsed(std::string_view bytes) {
  BinderFile binder;
  EXPECT_TRUE(parseBinder(bytes, binder));
  return binder;
}

// The lines behind the mark and the two head lines.
std::string linesOf(const BinderFile& binder) {
  const std::string bytes = binderBytes(binder);
  const std::size_t start = kMark.size() + kPlainHead.size();
  return bytes.size() < start ? bytes : bytes.substr(start);
}

BinderEntry viewIn(const BinderFile& binder, const std::u16string& key) {
  const auto found = binder.views.find(key);
  if (found != binder.views.end()) return found->second;
  ADD_FAILURE() << "no view of " << platform::toUtf8(key);
  return {};
}

BinderEntry viewOfLine(const std::string& fields) {
  return viewIn(parsed("a.pdf\t" + fields), u"a.pdf");
}

bool hasView(const std::string& fields) {
  return !parsed("a.pdf\t" + fields).views.empty();
}

class BinderFileTest : public SessionTest {};

// The name.

TEST(BinderName, IsTheFileNameWithoutItsLastExtension) {
  EXPECT_EQ(BinderNameFromPath(u"C:\\Lists\\Tax 2024.lst"), u"Tax 2024");
  EXPECT_EQ(BinderNameFromPath(u"C:\\Lists\\a.b.lst"), u"a.b");
  EXPECT_EQ(BinderNameFromPath(u"C:\\Li.sts\\plain"), u"plain");
  EXPECT_EQ(BinderNameFromPath(u"plain.lst"), u"plain");
  EXPECT_EQ(BinderNameFromPath(u"C:\\Lists\\"), u"");
  EXPECT_EQ(BinderNameFromPath(u""), u"");
}

// Reading lines.

TEST(BinderText, FilesComeInOrderAsTheyAreWritten) {
  const BinderFile binder =
      parsed("C:\\b.pdf\r\nC:\\A.PDF\r\n\\\\nas\\x y.pdf\r\nrelative.pdf\r\n");
  EXPECT_THAT(binder.files,
              ElementsAre(u"C:\\b.pdf", u"C:\\A.PDF", u"\\\\nas\\x y.pdf", u"relative.pdf"));
  EXPECT_THAT(binder.views, IsEmpty());
}

TEST(BinderText, TheMarkIsOptionalAndAnyLineEndDoes) {
  EXPECT_THAT(parsed(kMark + "a\r\nb\n").files, ElementsAre(u"a", u"b"));
  EXPECT_THAT(parsed("a\nb").files, ElementsAre(u"a", u"b"));
  EXPECT_THAT(parsed(kMark).files, IsEmpty());
  EXPECT_THAT(parsed("").files, IsEmpty());
}

TEST(BinderText, EmptyAndBlankLinesAreSkipped) {
  EXPECT_THAT(parsed("\r\n   \r\na\r\n\n\t\t\nb").files, ElementsAre(u"a", u"b"));
}

TEST(BinderText, BlanksInFrontStayAndThoseBehindGo) {
  EXPECT_THAT(parsed("  a.pdf  \r\n").files, ElementsAre(u"  a.pdf"));
}

TEST(BinderText, ATabBehindTheLastFieldIsNoPartOfThePath) {
  const BinderFile binder = parsed("a.pdf\t\t\r\n");
  EXPECT_THAT(binder.files, ElementsAre(u"a.pdf"));
  EXPECT_THAT(binder.views, IsEmpty());
}

TEST(BinderText, ALineThatBeginsWithATabHasNoPath) {
  EXPECT_THAT(parsed("\tpage=3\r\n").files, IsEmpty());
}

TEST(BinderText, PathsOfAnyScriptAreRead) {
  EXPECT_THAT(parsed("C:\\\xC3\x9C\xE6\x96\x87\xF0\x9F\x96\x8B.pdf\r\n").files,
              ElementsAre(u"C:\\\u00DC\u6587\U0001F58B.pdf"));
}

TEST(BinderText, BrokenUtf8IsReplacedAndNeverEndsTheLoad) {
  EXPECT_THAT(parsed("a\xFF.pdf\r\nb.pdf\r\nc\xC3\r\nd").files,
              ElementsAre(u"a\uFFFD.pdf", u"b.pdf", u"c\uFFFD", u"d"));
}

TEST(BinderText, ALineOfAsManyUnitsAsFitLoadsAndALongerOneIsDroppedAlone) {
  const std::string longest(518, 'x');
  const BinderFile binder = parsed(longest + "\r\n" + longest + "x\r\nnext.pdf\r\n");
  EXPECT_THAT(binder.files, ElementsAre(std::u16string(518, u'x'), u"next.pdf"));
}

TEST(BinderText, TheLengthOfALineIsCountedInUnitsAndNotInBytes) {
  std::string wide;
  for (int i = 0; i < 518; ++i) wide += "\xE6\x96\x87";
  EXPECT_THAT(parsed(wide + "\r\na").files, ElementsAre(std::u16string(518, u'\u6587'), u"a"));
  EXPECT_THAT(parsed(wide + "\xE6\x96\x87\r\na").files, ElementsAre(u"a"));
  std::string pairs;
  for (int i = 0; i < 260; ++i) pairs += "\xF0\x9F\x96\x8B";  // two units each
  EXPECT_THAT(parsed(pairs + "\r\na").files, ElementsAre(u"a"));
}

TEST(BinderText, TheFieldsCountTowardsTheLengthOfALine) {
  EXPECT_THAT(parsed(std::string(512, 'x') + "\tbold=1\r\na").files, ElementsAre(u"a"));
  EXPECT_EQ(parsed(std::string(511, 'x') + "\tbold=1\r\na").views.size(), 1u);
}

TEST(BinderText, ALongLastLineWithoutAnEndIsDroppedToo) {
  EXPECT_THAT(parsed(std::string(518, 'x')).files, ElementsAre(std::u16string(518, u'x')));
  EXPECT_THAT(parsed(std::string(519, 'x')).files, IsEmpty());
}

TEST(BinderText, ALineWithAZeroIsIgnored) {
  EXPECT_THAT(parsed(std::string("a\0b\r\nc\r\n", 8)).files, ElementsAre(u"c"));
}

TEST(BinderText, ACarriageReturnInsideALineStays) {
  EXPECT_THAT(parsed("a\rb.pdf\r\r\n").files, ElementsAre(u"a\rb.pdf"));
}

TEST(BinderText, LittleEndianUtf16IsReadByItsMark) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : std::u16string_view(u"# bold=1\r\nC:\\\u6587.pdf\tpage=4\r\nb")) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  const BinderFile binder = parsed(bytes + "x");  // half a unit at the end
  EXPECT_THAT(binder.files, ElementsAre(u"C:\\\u6587.pdf", u"b"));
  EXPECT_EQ(viewIn(binder, u"c:\\\u6587.pdf").page, 4);
  EXPECT_TRUE(binder.bold);
}

TEST(BinderText, LongLinesOfUtf16AreDroppedToo) {
  std::string bytes = "\xFF\xFE";
  for (int i = 0; i < 2000; ++i) bytes += std::string("x\0", 2);
  bytes += std::string("\n\0a\0", 4);
  EXPECT_THAT(parsed(bytes).files, ElementsAre(u"a"));
}

TEST(BinderText, BigEndianUtf16IsRefusedRatherThanTakenForNames) {
  BinderFile binder;
  binder.files = {u"kept"};
  EXPECT_FALSE(parseBinder(std::string("\xFE\xFF\0a\0\n", 6), binder));
  EXPECT_THAT(binder.files, ElementsAre(u"kept"));
}

// Head lines.

TEST(BinderText, HeadLinesSetTheFlags) {
  const BinderFile binder = parsed("# collapsed=1\r\n# bold=1\r\n");
  EXPECT_TRUE(binder.collapsed);
  EXPECT_TRUE(binder.bold);
}

TEST(BinderText, HeadLinesAreReadInAnyLetterCaseAndWithAnyBlanks) {
  EXPECT_TRUE(parsed("# COLLAPSED=1").collapsed);
  EXPECT_TRUE(parsed("#collapsed=1").collapsed);
  EXPECT_TRUE(parsed("#     bold=2").bold);
  EXPECT_TRUE(parsed("#\t \tbOld=x").bold);
  EXPECT_TRUE(parsed("# bold=").bold);  // an empty value is not a 0
}

TEST(BinderText, AZeroAtTheStartOfTheValueClearsAFlag) {
  BinderFile binder;
  binder.bold = true;
  binder.collapsed = true;
  parseBinder("# bold=0\n# collapsed=01\n", binder);
  EXPECT_FALSE(binder.bold);
  EXPECT_FALSE(binder.collapsed);
}

TEST(BinderText, FlagsThatNoLineNamesKeepTheirValues) {
  BinderFile binder;
  binder.bold = true;
  parseBinder("# bolder\n# bold = 0\n#\n", binder);
  EXPECT_TRUE(binder.bold);
}

TEST(BinderText, AHeadLineMayStandAnywhereAndIsNeverAFile) {
  const BinderFile binder = parsed("a\r\n#C:\\b.pdf\r\n# collapsed=1\r\nc\r\n");
  EXPECT_THAT(binder.files, ElementsAre(u"a", u"c"));
  EXPECT_TRUE(binder.collapsed);
}

// Fields.

TEST(BinderText, AllFieldsAreRead) {
  const BinderEntry view = viewOfLine("page=7\tpanX=-12.5\tpanY=3.25\tzoom=1.5\tmode=3\tbold=1");
  EXPECT_EQ(view.page, 7);
  EXPECT_TRUE(view.hasPage);
  EXPECT_EQ(view.panX, -12.5f);
  EXPECT_EQ(view.panY, 3.25f);
  EXPECT_EQ(view.zoom, 1.5f);
  EXPECT_EQ(view.mode, 3);
  EXPECT_TRUE(view.bold);
}

TEST(BinderText, FieldsComeInAnyOrderAndLetterCase) {
  const BinderEntry view = viewOfLine("BOLD=1\tMode=2\tZOOM=0.5\tPanY=1\tpANx=2\tPAGE=9");
  EXPECT_EQ(view.page, 9);
  EXPECT_EQ(view.panX, 2.0f);
  EXPECT_EQ(view.panY, 1.0f);
  EXPECT_EQ(view.zoom, 0.5f);
  EXPECT_EQ(view.mode, 2);
  EXPECT_TRUE(view.bold);
}

TEST(BinderText, ARunOfTabsSeparatesOnce) {
  EXPECT_EQ(viewOfLine("\t\tpage=3\t\t\t\tmode=1\t").mode, 1);
}

TEST(BinderText, UnknownFieldsAndTokensWithoutASignAreSkipped) {
  const BinderEntry view = viewOfLine("page\tcolor=red\tpage =8\t=5\tpage=4\tlater=x=y");
  EXPECT_EQ(view.page, 4);
}

TEST(BinderText, PagesAreHeldToTheirRange) {
  EXPECT_EQ(viewOfLine("page=0").page, 0);
  EXPECT_EQ(viewOfLine("page=999999").page, 999999);
  EXPECT_EQ(viewOfLine("page= +12abc").page, 12);
  EXPECT_EQ(viewOfLine("page=-0").page, 0);
  for (const char* text : {"1000000", "-1", "", "x", "-", "4294967296", "4294967297",
                           "99999999999999999999", "-4294967295", "0x"}) {
    const std::string field = std::string("page=") + text;
    if (std::string(text) == "0x") {
      EXPECT_EQ(viewOfLine(field).page, 0);  // the 0 is a number
    } else {
      EXPECT_FALSE(hasView(field)) << field;
    }
  }
}

TEST(BinderText, APageOfMinusOneKeepsThePathAndGivesNoView) {
  const BinderFile binder = parsed("a.pdf\tpage=-1\r\n");
  EXPECT_THAT(binder.files, ElementsAre(u"a.pdf"));
  EXPECT_THAT(binder.views, IsEmpty());
}

TEST(BinderText, ModesAreHeldToTheirRange) {
  for (int mode = 0; mode <= 3; ++mode) {
    EXPECT_EQ(viewOfLine("mode=" + std::to_string(mode)).mode, mode);
  }
  for (const char* text : {"4", "-1", "", "fit"}) {
    EXPECT_FALSE(hasView(std::string("mode=") + text)) << text;
  }
}

TEST(BinderText, TheBoundsOfTheZoomAreOutside) {
  EXPECT_EQ(viewOfLine("mode=3\tzoom=100").zoom, 1.0f);
  EXPECT_EQ(viewOfLine("mode=3\tzoom=0.01").zoom, 1.0f);
  EXPECT_EQ(viewOfLine("mode=3\tzoom=99.9").zoom, 99.9f);
  EXPECT_EQ(viewOfLine("mode=3\tzoom=0.011").zoom, 0.011f);
  for (const char* text : {"0", "-1", "", "x", "inf", "nan", "1e99", "100.1"}) {
    EXPECT_EQ(viewOfLine(std::string("mode=3\tzoom=") + text).zoom, 1.0f) << text;
  }
}

TEST(BinderText, APanIsAnyFiniteNumber) {
  EXPECT_EQ(viewOfLine("mode=3\tpanX=-1e5px").panX, -100000.0f);
  EXPECT_EQ(viewOfLine("mode=3\tpanX=1e-60").panX, 0.0f);
  for (const char* text : {"", "left", "inf", "-infinity", "nan", "1e39", "\xEF\xBC\x91"}) {
    EXPECT_EQ(viewOfLine(std::string("mode=3\tpanX=5\tpanX=") + text).panX, 5.0f) << text;
  }
}

TEST(BinderText, AFieldBehindABadOneStillCounts) {
  const BinderEntry view = viewOfLine("page=x\tzoom=nan\tmode=9\tmode=2\tpage=5");
  EXPECT_EQ(view.page, 5);
  EXPECT_EQ(view.mode, 2);
}

TEST(BinderText, OnlyAPageAModeOrBoldMakeAView) {
  EXPECT_FALSE(hasView("panX=3\tpanY=4\tzoom=2"));
  EXPECT_FALSE(hasView("bold=0"));
  EXPECT_TRUE(hasView("bold="));
  EXPECT_TRUE(hasView("page=0"));
  EXPECT_TRUE(hasView("mode=0"));
}

TEST(BinderText, TheSamePathTwiceGivesTwoFilesAndTheLaterView) {
  const BinderFile binder = parsed("C:\\A.pdf\tpage=3\r\nc:\\a.PDF\tbold=1\r\n");
  EXPECT_THAT(binder.files, ElementsAre(u"C:\\A.pdf", u"c:\\a.PDF"));
  ASSERT_EQ(binder.views.size(), 1u);
  EXPECT_TRUE(viewIn(binder, u"c:\\a.pdf").bold);
  EXPECT_FALSE(viewIn(binder, u"c:\\a.pdf").hasPage);
}

TEST(BinderText, ALaterLineWithoutAViewLeavesTheEarlierOne) {
  EXPECT_EQ(viewIn(parsed("a\tpage=3\r\nA\r\n"), u"a").page, 3);
}

// Writing.

TEST(BinderText, AnEmptyBinderIsItsTwoFlags) {
  BinderFile binder;
  EXPECT_EQ(binderBytes(binder), kMark + "# collapsed=0\r\n# bold=0\r\n");
  binder.collapsed = true;
  binder.bold = true;
  EXPECT_EQ(binderBytes(binder), kMark + "# collapsed=1\r\n# bold=1\r\n");
}

TEST(BinderText, AViewIsWrittenAsFarAsItGoes) {
  BinderFile binder;
  binder.files = {u"C:\\A.pdf"};
  EXPECT_EQ(linesOf(binder), "C:\\A.pdf\r\n");
  BinderEntry& view = binder.views[u"c:\\a.pdf"];
  EXPECT_EQ(linesOf(binder), "C:\\A.pdf\r\n");
  view.bold = true;
  EXPECT_EQ(linesOf(binder), "C:\\A.pdf\tbold=1\r\n");
  view.page = 6;
  view.hasPage = true;
  EXPECT_EQ(linesOf(binder), "C:\\A.pdf\tpage=6\tbold=1\r\n");
  view.mode = 3;
  view.panX = -1.5f;
  view.panY = 1234567.0f;
  view.zoom = 1.1f;
  EXPECT_EQ(linesOf(binder),
            "C:\\A.pdf\tpage=6\tpanX=-1.5\tpanY=1.23457e+06\tzoom=1.1\tmode=3\tbold=1\r\n");
  view.bold = false;
  view.mode = 0;
  view.panY = 0.00001f;
  EXPECT_EQ(linesOf(binder), "C:\\A.pdf\tpage=6\tpanX=-1.5\tpanY=1e-05\tzoom=1.1\tmode=0\r\n");
}

TEST(BinderText, AZoomWithoutAModeIsNotWrittenBack) {
  EXPECT_EQ(linesOf(parsed("a.pdf\tzoom=99.9\tbold=1")), "a.pdf\tbold=1\r\n");
}

TEST(BinderText, PathsAreWrittenInUtf8) {
  BinderFile binder;
  binder.files = {u"C:\\\u00DC\u6587\U0001F58B.pdf"};
  EXPECT_EQ(linesOf(binder), "C:\\\xC3\x9C\xE6\x96\x87\xF0\x9F\x96\x8B.pdf\r\n");
}

TEST(BinderText, ALineThatWouldBeTooLongKeepsItsPathAlone) {
  const BinderFile binder = parsed(std::string(500, 'x') + "\tmode=1\r\nb\tmode=1\r\n");
  const BinderFile again = parsed(binderBytes(binder));
  EXPECT_EQ(again.files, binder.files);
  EXPECT_EQ(again.views.size(), 1u);
}

TEST(BinderText, ABlankInFrontOfTheFieldsDoesNotChangeThePathAtTheNextStart) {
  const BinderFile binder = parsed("a.pdf \tpage=-1\r\nb.pdf\r\tpage=2\r\n");
  EXPECT_EQ(parsed(binderBytes(binder)).files, binder.files);
}

TEST(BinderText, NoneOfManyDamagedFilesIsTooMuchAndAllThatWasReadIsReadAgain) {
  RandomBinderTexts texts;
  std::size_t files = 0;
  for (int round = 0; round < 100'000; ++round) {
    const std::string text = texts.next();
    BinderFile binder;
    if (!parseBinder(text, binder)) continue;
    files += binder.files.size();
    if (round % 10 != 0) continue;
    ASSERT_EQ(lostByWriting(binder), "") << round << ": " << text;
  }
  EXPECT_GT(files, 100'000u);  // most of the lines are good
}

// Bounds on work.

TEST(BinderText, AHundredMegabytesWithoutALineEndAreNotEvenDecoded) {
  const std::string junk(100 << 20, 'j');
  const std::uint64_t before = platform::conversionSteps();
  EXPECT_THAT(parsed(junk).files, IsEmpty());
  EXPECT_EQ(platform::conversionSteps(), before);
}

TEST(BinderText, OfAHundredMegabytesOfShortLinesThoseThatAreHeldAreDecoded) {
  const std::string line = "C:\\short 1.pdf\r\n";
  std::string text;
  for (text.reserve(100 << 20); text.size() + line.size() <= text.capacity();) text += line;
  const std::uint64_t before = platform::conversionSteps();
  const BinderFile binder = parsed(text);
  EXPECT_EQ(binder.files.size(), kMostFilesHeld);
  EXPECT_EQ(binder.furtherLines.size() + kMostFilesHeld * line.size(), text.size());
  // Each line held is decoded and looked up once.
  EXPECT_LE(platform::conversionSteps() - before, 2 * kMostFilesHeld * line.size());
}

TEST(BinderText, EmptyLinesAreNotDecoded) {
  const std::uint64_t before = platform::conversionSteps();
  EXPECT_THAT(parsed(std::string(10 << 20, '\n')).files, IsEmpty());
  std::string wide = "\xFF\xFE";
  for (int i = 0; i < 1000; ++i) wide.append("\r\0\n\0", 4);
  EXPECT_THAT(parsed(wide).files, IsEmpty());
  EXPECT_EQ(platform::conversionSteps(), before);
}

// Files.

TEST_F(BinderFileTest, AFileIsLoadedUnderItsName) {
  platform::putFile(kPath, "# bold=1\r\nC:\\a.pdf\tpage=2\r\n");
  BinderFile binder;
  binder.files = {u"C:\\old.pdf"};
  binder.views[u"c:\\old.pdf"].bold = true;
  binder.dirty = true;
  binder.collapsed = true;
  EXPECT_TRUE(LoadBinderFile(kPath, binder));
  EXPECT_EQ(binder.path, kPath);
  EXPECT_EQ(binder.name, u"Tax 2024");
  EXPECT_THAT(binder.files, ElementsAre(u"C:\\a.pdf"));
  EXPECT_EQ(binder.views.size(), 1u);
  EXPECT_FALSE(binder.dirty);
  EXPECT_TRUE(binder.bold);
  EXPECT_TRUE(binder.collapsed);  // the file says nothing about it
}

TEST_F(BinderFileTest, AnEmptyFileIsAnEmptyBinder) {
  platform::putFile(kPath, "");
  BinderFile binder;
  EXPECT_TRUE(LoadBinderFile(kPath, binder));
  EXPECT_THAT(binder.files, IsEmpty());
}

TEST_F(BinderFileTest, AFileThatCannotBeOpenedEmptiesTheBinderAndSaysSo) {
  BinderFile binder;
  binder.files = {u"C:\\old.pdf"};
  EXPECT_FALSE(LoadBinderFile(kPath, binder));
  EXPECT_EQ(binder.path, kPath);
  EXPECT_EQ(binder.name, u"Tax 2024");
  EXPECT_THAT(binder.files, IsEmpty());
  platform::putFile(kPath, "a");
  platform::setOtherUse(kPath, platform::OtherUse::Exclusive);
  EXPECT_FALSE(LoadBinderFile(kPath, binder));
  EXPECT_FALSE(LoadBinderFile(u"C:\\Lists", binder));
  EXPECT_FALSE(LoadBinderFile(u"", binder));
}

TEST_F(BinderFileTest, AFileOfJunkWithoutALineEndIsAnEmptyBinder) {
  platform::putFile(kPath, std::string(5 << 20, 'j'));
  BinderFile binder;
  EXPECT_TRUE(LoadBinderFile(kPath, binder));
  EXPECT_THAT(binder.files, IsEmpty());
}

TEST_F(BinderFileTest, MoreFilesThanAPanelCanShowAreKept) {
  std::string text;
  for (int i = 0; i < 70000; ++i) text += "C:\\" + std::to_string(i) + ".pdf\r\n";
  platform::putFile(kPath, text);
  BinderFile binder;
  EXPECT_TRUE(LoadBinderFile(kPath, binder));
  EXPECT_EQ(binder.files.size(), 70000u);
  EXPECT_TRUE(WriteBinderFile(binder));
  EXPECT_EQ(platform::fileBytes(kPath), kMark + kPlainHead + text);
}

TEST_F(BinderFileTest, LinesBeyondWhatABinderHoldsAreKeptAsText) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += std::to_string(i) + "\r\n";
  const std::string further =
      "x.pdf\tpage=3\todd=1\r\n0\r\n\xE6\x96\x87.pdf\r\n" + std::string(518, 'l') + "\r\n b\r\n";
  const std::string dropped = "# collapsed=1\r\n \n\tpage=1\n \r \tpage=1\n" +
                              std::string(519, 'l') + "\n" + std::string("z\0\n", 3);
  platform::putFile(kPath, text + further + dropped + "last \r ");
  BinderFile binder;
  EXPECT_TRUE(LoadBinderFile(kPath, binder));
  EXPECT_EQ(binder.files.size(), 100000u);
  EXPECT_THAT(binder.views, IsEmpty());
  EXPECT_TRUE(binder.collapsed);
  EXPECT_EQ(binder.furtherLines, further + "last\r\n");
  binder.files.erase(binder.files.begin());
  EXPECT_TRUE(WriteBinderFile(binder));
  // A comparison that printed the difference of such texts would take for ever.
  EXPECT_TRUE(platform::fileBytes(kPath) ==
              kMark + "# collapsed=1\r\n# bold=0\r\n" + text.substr(3) + further + "last\r\n");
  EXPECT_TRUE(LoadBinderFile(kPath, binder));
  EXPECT_EQ(binder.files.back(), u"x.pdf");
  EXPECT_EQ(viewIn(binder, u"x.pdf").page, 3);
}

TEST_F(BinderFileTest, AWriteReplacesTheFileAndClearsTheDirtyFlag) {
  platform::putFile(kPath, std::string(5000, 'x'));
  BinderFile binder;
  binder.path = kPath;
  binder.files = {u"C:\\a.pdf"};
  binder.dirty = true;
  EXPECT_TRUE(WriteBinderFile(binder));
  EXPECT_FALSE(binder.dirty);
  EXPECT_EQ(platform::fileBytes(kPath), kMark + kPlainHead + "C:\\a.pdf\r\n");
}

TEST_F(BinderFileTest, AWriteThatFailsPartWayLeavesTheFileAsItWas) {
  using platform::FileCall;
  platform::putFile(kPath, "kept");
  BinderFile binder;
  binder.path = kPath;
  for (int i = 0; i < 100; ++i) binder.files.push_back(u"C:\\a.pdf");
  for (const FileCall call :
       {FileCall::Write, FileCall::Flush, FileCall::Close, FileCall::Replace}) {
    standIn().refuseFileCall = [call](FileCall asked) { return asked == call; };
    binder.dirty = true;
    EXPECT_FALSE(WriteBinderFile(binder));
    EXPECT_TRUE(binder.dirty);
    EXPECT_EQ(platform::fileBytes(kPath), "kept");
    EXPECT_THAT(platform::namesIn(u"C:\\Lists"), ElementsAre(u"Tax 2024.lst"));
  }
  standIn().refuseFileCall = {};
  standIn().diskFree = 200;
  EXPECT_FALSE(WriteBinderFile(binder));
  EXPECT_EQ(platform::fileBytes(kPath), "kept");
}

TEST_F(BinderFileTest, AFolderThatTakesNoNewFileStillLetsItsBindersBeWritten) {
  platform::putFile(kPath, "old");
  standIn().refuseFileCall = [](platform::FileCall call) {
    return call == platform::FileCall::Start;
  };
  BinderFile binder;
  binder.path = kPath;
  EXPECT_TRUE(WriteBinderFile(binder));
  EXPECT_EQ(platform::fileBytes(kPath), kMark + kPlainHead);
}

// The last path that the system opens leaves no room for a longer name beside it.
TEST_F(BinderFileTest, ABinderWhosePathIsAsLongAsPathsGetIsWritten) {
  const std::u16string folder =
      u"C:\\" + std::u16string(120, u'f') + u"\\" + std::u16string(259 - 3 - 121 - 6, u'g');
  platform::putFolder(folder);
  const std::u16string path = folder + u"\\a.lst";
  ASSERT_EQ(path.size(), 259u);
  BinderFile binder;
  binder.path = path;
  binder.files = {u"C:\\" + std::u16string(252, u'd') + u".pdf"};
  EXPECT_TRUE(WriteBinderFile(binder));
  BinderFile again;
  EXPECT_TRUE(LoadBinderFile(path, again));
  EXPECT_EQ(again.files, binder.files);
  EXPECT_EQ(again.name, u"a");
}

TEST_F(BinderFileTest, ABinderWhoseFileHasGoneIsMadeAgain) {
  platform::putFolder(u"C:\\Lists");
  BinderFile binder;
  binder.path = kPath;
  EXPECT_TRUE(WriteBinderFile(binder));
  EXPECT_NE(platform::fileBytes(kPath), std::nullopt);
}

TEST_F(BinderFileTest, AFailedWriteIsSilentAndAFailedSaveIsTold) {
  platform::putFile(kPath, "kept");
  platform::setReadOnly(kPath, true);
  BinderFile binder;
  binder.path = kPath;
  binder.dirty = true;
  EXPECT_FALSE(WriteBinderFile(binder));
  EXPECT_THAT(standIn().boxes, IsEmpty());
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(SaveBinderFile(binder));
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].title, u"Save Binder Failed");
  EXPECT_EQ(standIn().boxes[0].icon, platform::BoxIcon::Warning);
  EXPECT_EQ(standIn().boxes[0].text,
            u"Could not save the binder file:\n\n    C:\\Lists\\Tax 2024.lst\n\nYour change is in "
            u"memory but has NOT been written to disk.");
  EXPECT_TRUE(binder.dirty);
  EXPECT_EQ(platform::fileBytes(kPath), "kept");
  platform::setReadOnly(kPath, false);
  EXPECT_TRUE(SaveBinderFile(binder));
}

TEST_F(BinderFileTest, ABinderWithoutAFileCannotBeWritten) {
  BinderFile binder;
  EXPECT_FALSE(WriteBinderFile(binder));
}

TEST_F(BinderFileTest, AViewerWritesNoBinderAndSaysNothing) {
  platform::putFile(kPath, "kept");
  session.viewerRole = true;
  BinderFile binder;
  binder.path = kPath;
  EXPECT_FALSE(WriteBinderFile(binder));
  EXPECT_FALSE(SaveBinderFile(binder));
  EXPECT_EQ(platform::fileBytes(kPath), "kept");
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(BinderFileTest, AShareThatDoesNotAnswerFailsAWriteWithinTheTimeout) {
  session.settings.openTimeoutSeconds = 1;
  platform::setVolume(u"\\\\nas\\lists", platform::VolumeState::Silent);
  BinderFile binder;
  binder.path = u"\\\\nas\\lists\\a.lst";
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(WriteBinderFile(binder));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  platform::setVolume(u"\\\\nas\\lists", platform::VolumeState::Present);
  EXPECT_TRUE(platform::waitForDetachedThreads());
  platform::sleepMilliseconds(5000);  // takes no real time
  EXPECT_TRUE(WriteBinderFile(binder));
}

TEST_F(BinderFileTest, ManyBindersOnAShareThatDoesNotAnswerWaitOnce) {
  session.settings.openTimeoutSeconds = 1;
  for (const char16_t* share : {u"\\\\nas\\lists", u"\\\\nas\\other"}) {
    platform::setVolume(share, platform::VolumeState::Silent);
  }
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 50; ++i) {
    BinderFile binder;
    binder.path = (i % 2 == 0 ? u"\\\\nas\\lists\\" : u"\\\\NAS\\Other\\") + decimal(i) + u".lst";
    EXPECT_FALSE(WriteBinderFile(binder));
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  for (const char16_t* share : {u"\\\\nas\\lists", u"\\\\nas\\other"}) {
    platform::setVolume(share, platform::VolumeState::Failing);
  }
  EXPECT_TRUE(platform::waitForDetachedThreads());
}

}  // namespace
}  // namespace quillmere::test
