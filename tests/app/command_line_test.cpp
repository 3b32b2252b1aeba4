#include <gtest/gtest.h>

#include <string>

#include "app/startup.h"

namespace quillmere::test {
namespace {

std::u16string repeated(std::size_t units) {
  return std::u16string(units, u'x');
}

TEST(CommandLineTest, AnEmptyLineOpensNothing) {
  const LaunchArguments arguments = parseCommandLine(u"");
  EXPECT_FALSE(arguments.printChild);
  EXPECT_FALSE(arguments.viewerRole);
  EXPECT_EQ(arguments.filePath, u"");
}

TEST(CommandLineTest, ThePrintPrefixMakesAPrintChild) {
  EXPECT_TRUE(parseCommandLine(u"--print").printChild);
  EXPECT_TRUE(parseCommandLine(u"--print --owner 1").printChild);
}

TEST(CommandLineTest, PrefixesNeedNoBlankBehindThem) {
  EXPECT_TRUE(parseCommandLine(u"--printer").printChild);
  const LaunchArguments viewer = parseCommandLine(u"--viewerC:\\a.pdf");
  EXPECT_TRUE(viewer.viewerRole);
  EXPECT_EQ(viewer.filePath, u"C:\\a.pdf");
}

TEST(CommandLineTest, PrefixesAreCaseSensitive) {
  const LaunchArguments print = parseCommandLine(u"--PRINT");
  EXPECT_FALSE(print.printChild);
  EXPECT_EQ(print.filePath, u"--PRINT");
  const LaunchArguments viewer = parseCommandLine(u"--Viewer C:\\a.pdf");
  EXPECT_FALSE(viewer.viewerRole);
  EXPECT_EQ(viewer.filePath, u"--Viewer C:\\a.pdf");
}

TEST(CommandLineTest, APrefixCountsAtTheVeryBeginningAlone) {
  EXPECT_FALSE(parseCommandLine(u"C:\\a.pdf --print").printChild);
  EXPECT_FALSE(parseCommandLine(u"\"--viewer\" C:\\a.pdf").viewerRole);
  EXPECT_EQ(parseCommandLine(u"\"--viewer\" C:\\a.pdf").filePath, u"--viewer");
}

TEST(CommandLineTest, AShortenedPrefixIsAPath) {
  EXPECT_EQ(parseCommandLine(u"--prin").filePath, u"--prin");
  EXPECT_EQ(parseCommandLine(u"--viewe").filePath, u"--viewe");
}

TEST(CommandLineTest, PrintIsAskedBeforeViewer) {
  const LaunchArguments both = parseCommandLine(u"--print--viewer");
  EXPECT_TRUE(both.printChild);
  EXPECT_FALSE(both.viewerRole);
  const LaunchArguments viewer = parseCommandLine(u"--viewer--print");
  EXPECT_FALSE(viewer.printChild);
  EXPECT_TRUE(viewer.viewerRole);
  EXPECT_EQ(viewer.filePath, u"--print");
}

TEST(CommandLineTest, AViewerWithoutPathIsEmpty) {
  for (const char16_t* line : {u"--viewer", u"--viewer ", u"--viewer     "}) {
    const LaunchArguments arguments = parseCommandLine(line);
    EXPECT_TRUE(arguments.viewerRole);
    EXPECT_EQ(arguments.filePath, u"");
  }
}

TEST(CommandLineTest, AnyRunOfSpacesBehindViewerIsSkipped) {
  EXPECT_EQ(parseCommandLine(u"--viewer    \"C:\\a b.pdf\"").filePath, u"C:\\a b.pdf");
  EXPECT_EQ(parseCommandLine(u"--viewer   C:\\a b.pdf").filePath, u"C:\\a b.pdf");
}

TEST(CommandLineTest, OtherBlanksBehindViewerBelongToThePath) {
  EXPECT_EQ(parseCommandLine(u"--viewer\tC:\\a.pdf").filePath, u"\tC:\\a.pdf");
}

TEST(CommandLineTest, AnUnquotedLineIsOnePathWithItsSpaces) {
  EXPECT_EQ(parseCommandLine(u"C:\\my files\\a b.pdf more ").filePath,
            u"C:\\my files\\a b.pdf more ");
}

TEST(CommandLineTest, QuotesInsideAnUnquotedLineStay) {
  EXPECT_EQ(parseCommandLine(u"C:\\a \"b\".pdf").filePath, u"C:\\a \"b\".pdf");
}

TEST(CommandLineTest, WhatFollowsTheClosingQuoteIsDropped) {
  EXPECT_EQ(parseCommandLine(u"\"C:\\a b.pdf\" \"C:\\c.pdf\"").filePath, u"C:\\a b.pdf");
  EXPECT_EQ(parseCommandLine(u"\"C:\\a.pdf\"b.pdf").filePath, u"C:\\a.pdf");
}

TEST(CommandLineTest, AnUnclosedQuoteRunsToTheEnd) {
  EXPECT_EQ(parseCommandLine(u"\"C:\\a b.pdf").filePath, u"C:\\a b.pdf");
}

TEST(CommandLineTest, EmptyQuotesNameNoFile) {
  EXPECT_EQ(parseCommandLine(u"\"\"").filePath, u"");
  EXPECT_EQ(parseCommandLine(u"\"\" C:\\a.pdf").filePath, u"");
  EXPECT_EQ(parseCommandLine(u"\"").filePath, u"");
}

TEST(CommandLineTest, APathOf259UnitsStaysWhole) {
  EXPECT_EQ(parseCommandLine(repeated(259)).filePath, repeated(259));
  EXPECT_EQ(parseCommandLine(u"\"" + repeated(259) + u"\"").filePath, repeated(259));
}

TEST(CommandLineTest, LongerPathsAreCutTo259Units) {
  for (std::size_t units : {260u, 261u, 5000u}) {
    EXPECT_EQ(parseCommandLine(repeated(units)).filePath, repeated(259));
    EXPECT_EQ(parseCommandLine(u"--viewer " + repeated(units)).filePath, repeated(259));
    EXPECT_EQ(parseCommandLine(u"\"" + repeated(units) + u"\"").filePath, repeated(259));
  }
}

TEST(CommandLineTest, SurrogatePairsCountAsTwoUnits) {
  std::u16string path;
  for (int i = 0; i < 130; ++i) path += u"\U0001F4C4";
  EXPECT_EQ(parseCommandLine(path).filePath, path.substr(0, 259));
}

TEST(CommandLineTest, APathOfAnyScriptPasses) {
  EXPECT_EQ(parseCommandLine(u"\"C:\\\u041F\u0430\u043F\u043A\u0430\\\U0001F4C4.pdf\"").filePath,
            u"C:\\\u041F\u0430\u043F\u043A\u0430\\\U0001F4C4.pdf");
}

}  // namespace
}  // namespace quillmere::test
