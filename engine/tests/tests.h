#ifndef QUILLMERE_ENGINE_TESTS_TESTS_H_
#define QUILLMERE_ENGINE_TESTS_TESTS_H_

#include <string>

// |folder| is where files may be written.
void TestPageAndText(const std::string& folder);
void TestStamps();
void TestPagesForAnnotations();
void TestMarkups();
void TestFindingForgetsNoChange();
void TestSearchInSlices();
void TestSearchForSeveralSubtypes();
void TestDamagedTrees();
void TestPageIndexes();
void TestCyclicTrees();

void TestFormsInForms();
void TestFormsOnThePage();

void TestReleaseChangesNothing();
void TestReleaseGivesBack();
void TestReleaseRefuses();
void TestReleaseKeepsOutline();
void TestReleaseAfterDrawing();
void TestReleaseAfterEdits();

void TestFieldsAreDrawn();
void TestFieldFlags();
void TestFieldsOutOfDate();

void TestFlattenCommonKinds();
void TestFlattenAppearances();
void TestFlattenKeepsWhatIsNotDrawn();
void TestFlattenFields();
void TestFlattenLeavesOtherPagesAndBoxes();
void TestFlattenOpenStates();
void TestFlattenManyAnnotations();
void TestInsertedReferences();
void TestInsertedShapes();
void TestWrongNodes();
void TestSharedPages();

void TestSavedEncryption();
void TestSavedMetadata();
void TestPackedStaysPacked();
void TestUnpackedStaysUnpacked();
void TestTablesWithoutGaps();
void TestTablesOfSparseNumbers();
void TestManyPackedObjects();

void TestPopupsAreNotMade();
void TestForeignQuads();
void TestMarkAppearances();
void TestMarkEntries();
void TestPopupIndexes();
void TestRemovedStampsAreNotWritten();
void TestSharedImages();

void TestTurnedImages();
void TestThinTurnedImages();
void TestTurnedImagesThatTouch();

// These leave files in |folder| for compare_readers.py.
void WriteFieldsToCompare(const std::string& folder);
void WriteMarksToCompare(const std::string& folder);

#endif  // QUILLMERE_ENGINE_TESTS_TESTS_H_
