// Tries the engine on small documents that are put together here. Exits with 0
// if everything held, and says what did not.
// Usage: selftest FOLDER [pictures | TEST]
// Files go into FOLDER; "pictures" alone writes there what compare_readers.py looks at. With the name
// of a test only that one runs.

#include <stdio.h>

#include <string>

#include "fpdfview.h"
#include "quillmere_engine.h"
#include "support.h"
#include "tests.h"

namespace {

struct Test {
  const char* name;
  void (*run)();
};

#define TEST_ROW(function) {#function, function}
constexpr Test kTests[] = {
    TEST_ROW(TestStamps),
    TEST_ROW(TestPagesForAnnotations),
    TEST_ROW(TestMarkups),
    TEST_ROW(TestFindingForgetsNoChange),
    TEST_ROW(TestSearchInSlices),
    TEST_ROW(TestSearchForSeveralSubtypes),
    TEST_ROW(TestDamagedTrees),
    TEST_ROW(TestPageIndexes),
    TEST_ROW(TestCyclicTrees),
    TEST_ROW(TestFormsInForms),
    TEST_ROW(TestFormsOnThePage),
    TEST_ROW(TestReleaseChangesNothing),
    TEST_ROW(TestReleaseGivesBack),
    TEST_ROW(TestReleaseRefuses),
    TEST_ROW(TestReleaseKeepsOutline),
    TEST_ROW(TestReleaseAfterDrawing),
    TEST_ROW(TestReleaseAfterEdits),
    TEST_ROW(TestFieldsAreDrawn),
    TEST_ROW(TestFieldFlags),
    TEST_ROW(TestFieldsOutOfDate),
    TEST_ROW(TestFlattenCommonKinds),
    TEST_ROW(TestFlattenAppearances),
    TEST_ROW(TestFlattenKeepsWhatIsNotDrawn),
    TEST_ROW(TestFlattenFields),
    TEST_ROW(TestFlattenLeavesOtherPagesAndBoxes),
    TEST_ROW(TestFlattenOpenStates),
    TEST_ROW(TestFlattenManyAnnotations),
    TEST_ROW(TestInsertedReferences),
    TEST_ROW(TestInsertedShapes),
    TEST_ROW(TestWrongNodes),
    TEST_ROW(TestSharedPages),
    TEST_ROW(TestSavedEncryption),
    TEST_ROW(TestSavedMetadata),
    TEST_ROW(TestPackedStaysPacked),
    TEST_ROW(TestUnpackedStaysUnpacked),
    TEST_ROW(TestTablesWithoutGaps),
    TEST_ROW(TestTablesOfSparseNumbers),
    TEST_ROW(TestManyPackedObjects),
    TEST_ROW(TestPopupsAreNotMade),
    TEST_ROW(TestForeignQuads),
    TEST_ROW(TestMarkAppearances),
    TEST_ROW(TestMarkEntries),
    TEST_ROW(TestPopupIndexes),
    TEST_ROW(TestRemovedStampsAreNotWritten),
    TEST_ROW(TestSharedImages),
    TEST_ROW(TestTurnedImages),
    TEST_ROW(TestThinTurnedImages),
    TEST_ROW(TestTurnedImagesThatTouch)};

}  // namespace

int main(int argc, char** argv) {
  const std::string folder = argc > 1 ? argv[1] : ".";
  const std::string wanted = argc > 2 ? argv[2] : "";
  setvbuf(stdout, nullptr, _IONBF, 0);
  FPDF_InitLibrary();
  TestPageAndText(folder);
  for (const Test& test : kTests) {
    if (wanted.empty() || wanted == test.name) {
      test.run();
    }
  }
  if (wanted == "pictures") {
    WriteFieldsToCompare(folder);
    WriteMarksToCompare(folder);
  }
  FPDF_DestroyLibrary();
  const std::string version = QuillmereEngine_Version();
  Check(version.find('.') != std::string::npos, "a version with dots, got: " + version);
  printf("PDFium %s: %s\n", version.c_str(), Failures() ? "failures above" : "all checks held");
  return Failures() ? 1 : 0;
}
