#include "store/settings_colors.h"

#include <gtest/gtest.h>

#include "platform/text.h"
#include "store/settings.h"
#include "support/settings_file.h"

namespace quillmere::test {
namespace {

class ColorTableTest : public SettingsFileTest {};

TEST_F(ColorTableTest, AFirstStartWritesEveryColorBeforeAnythingElse) {
  restart();
  const std::vector<IniEntry> expected = {
      {u"TextColors", u"Color0_Name", u"Black"},    {u"TextColors", u"Color0_Value", u"#000000"},
      {u"TextColors", u"Color1_Name", u"Red"},      {u"TextColors", u"Color1_Value", u"#C81E1E"},
      {u"TextColors", u"Color2_Name", u"Green"},    {u"TextColors", u"Color2_Value", u"#008200"},
      {u"TextColors", u"Color3_Name", u"Blue"},     {u"TextColors", u"Color3_Value", u"#1432C8"},
      {u"TextColors", u"Color4_Name", u"Gray"},     {u"TextColors", u"Color4_Value", u"#787878"},
      {u"TextColors", u"Color5_Name", u"Orange"},   {u"TextColors", u"Color5_Value", u"#EB6E00"},
      {u"TextColors", u"Color6_Name", u"Yellow"},   {u"TextColors", u"Color6_Value", u"#D2AA00"},
      {u"TextColors", u"Color7_Name", u"Purple"},   {u"TextColors", u"Color7_Value", u"#7D23AA"},
      {u"MarkupColors", u"Color0_Name", u"Yellow"}, {u"MarkupColors", u"Color0_Value", u"#FFEB3C"},
      {u"MarkupColors", u"Color1_Name", u"Green"},  {u"MarkupColors", u"Color1_Value", u"#82E682"},
      {u"MarkupColors", u"Color2_Name", u"Cyan"},   {u"MarkupColors", u"Color2_Value", u"#78DCEB"},
      {u"MarkupColors", u"Color3_Name", u"Pink"},   {u"MarkupColors", u"Color3_Value", u"#FF96C8"},
      {u"MarkupColors", u"Color4_Name", u"Orange"}, {u"MarkupColors", u"Color4_Value", u"#FFB450"},
      {u"MarkupColors", u"Color5_Name", u"Blue"},   {u"MarkupColors", u"Color5_Value", u"#78A0FF"},
      {u"MarkupColors", u"Color6_Name", u"Red"},    {u"MarkupColors", u"Color6_Value", u"#EB5050"},
  };
  std::vector<IniEntry> entries = iniEntries();
  ASSERT_GE(entries.size(), expected.size());
  entries.resize(expected.size());
  EXPECT_EQ(entries, expected);
}

TEST_F(ColorTableTest, AColorEditedByHandIsReadAndStays) {
  putIni(u"[TextColors]\nColor3_Name=Ultramarine\nColor3_Value=#0a0BfF\n");
  restart();
  EXPECT_EQ(session.settings.textColors[3], (ColorEntry{u"Ultramarine", 0x0A, 0x0B, 0xFF}));
  SaveSettings();
  EXPECT_EQ(iniValue(u"TextColors", u"Color3_Name"), u"Ultramarine");
  EXPECT_EQ(iniValue(u"TextColors", u"Color3_Value"), u"#0a0BfF");
}

TEST(ColorValueTest, OnlyANumberSignAndSixHexadecimalDigitsAreAColor) {
  EXPECT_EQ(parseColorValue(u"#78A0FF"), (ColorEntry{u"", 0x78, 0xA0, 0xFF}));
  EXPECT_EQ(parseColorValue(u"#78a0ff"), (ColorEntry{u"", 0x78, 0xA0, 0xFF}));
  for (const std::u16string_view text :
       {u"#78A0FF1", u"#78A0F", u"#78A0FG", u"78A0FF", u"78A0FF1", u"#+8A0FF", u"#0x8A0F",
        u"# 8A0FF", u"#78A0FF ", u"", u"#", u"##8A0FF", u"#78A0F\uFF26"}) {
    EXPECT_EQ(parseColorValue(text), std::nullopt) << platform::toUtf8(text);
  }
}

TEST_F(ColorTableTest, MalformedValuesAreReplacedInMemoryAndInTheFile) {
  putIni(
      u"[MarkupColors]\nColor0_Name=A\nColor0_Value=#FFEB3C1\nColor1_Name=B\n"
      u"Color1_Value=#82E68G\nColor2_Name=C\nColor2_Value=78DCEB\nColor3_Name=D\n"
      u"Color3_Value=#112233\n");
  restart();
  MarkupColorTable expected = builtInMarkupColors();
  expected[3] = {u"D", 0x11, 0x22, 0x33};
  EXPECT_EQ(session.settings.markupColors, expected);
  EXPECT_EQ(iniValue(u"MarkupColors", u"Color0_Name"), u"Yellow");
  EXPECT_EQ(iniValue(u"MarkupColors", u"Color0_Value"), u"#FFEB3C");
  EXPECT_EQ(iniValue(u"MarkupColors", u"Color1_Value"), u"#82E682");
  EXPECT_EQ(iniValue(u"MarkupColors", u"Color2_Value"), u"#78DCEB");
  EXPECT_EQ(iniValue(u"MarkupColors", u"Color3_Value"), u"#112233");
}

TEST_F(ColorTableTest, AColorWithoutANameIsReplaced) {
  putIni(u"[TextColors]\nColor1_Name=\nColor1_Value=#010203\n");
  restart();
  EXPECT_EQ(session.settings.textColors[1], (ColorEntry{u"Red", 0xC8, 0x1E, 0x1E}));
  EXPECT_EQ(iniValue(u"TextColors", u"Color1_Value"), u"#C81E1E");
}

TEST_F(ColorTableTest, ALongNameIsCutInMemoryOnly) {
  const std::u16string name = u"A name of forty units, as long as it is.";
  ASSERT_EQ(name.size(), 40u);
  putIni(u"[TextColors]\nColor0_Name=" + name + u"\nColor0_Value=#112233\n");
  restart();
  EXPECT_EQ(session.settings.textColors[0], (ColorEntry{name.substr(0, 31), 0x11, 0x22, 0x33}));
  EXPECT_EQ(iniValue(u"TextColors", u"Color0_Name"), name);
}

TEST_F(ColorTableTest, AViewerKeepsTheBuiltInColorAndLeavesTheFileAlone) {
  putIni(u"[TextColors]\nColor1_Name=Mine\nColor1_Value=none\n");
  resetSession();
  session.viewerRole = true;
  LoadSettings();
  EXPECT_EQ(session.settings.textColors[1], (ColorEntry{u"Red", 0xC8, 0x1E, 0x1E}));
  EXPECT_EQ(iniValue(u"TextColors", u"Color1_Value"), u"none");
  EXPECT_EQ(iniValue(u"TextColors", u"Color0_Name"), std::nullopt);
}

TEST_F(ColorTableTest, TheLastRowAndNoneBehindItIsWritten) {
  restart();
  EXPECT_EQ(iniValue(u"MarkupColors", u"Color7_Name"), std::nullopt);
  EXPECT_EQ(iniValue(u"TextColors", u"Color8_Name"), std::nullopt);
}

}  // namespace
}  // namespace quillmere::test
