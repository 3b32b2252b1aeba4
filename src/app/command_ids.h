#pragma once

#include <cstdint>

namespace quillmere {

// Command ids as menus, accelerators and other processes know them.
enum CommandId : std::uint32_t {
  kCmdOpen = 101,
  kCmdPreviousInFolder = 103,
  kCmdNextInFolder = 104,
  kCmdClose = 105,
  kCmdPrint = 106,
  kCmdNewBinder = 107,
  kCmdExistingBinder = 108,
  kCmdExit = 109,
  kCmdOpenInViewer = 110,

  kCmdBookmarksPanel = 201,
  kCmdZoomIn = 202,
  kCmdZoomOut = 203,
  kCmdFitPage = 204,
  kCmdFitWidth = 205,
  kCmdActualSize = 206,
  kCmdEqualPanes = 207,
  kCmdCustomFit = 208,
  kCmdPanScroll = 209,
  kCmdRotateDocument = 210,
  kCmdRotatePage = 211,
  kCmdBindersPanel = 212,
  kCmdRefreshFromSource = 213,
  kCmdGroupMarkups = 214,

  kCmdSinglePage = 301,
  kCmdBook = 302,
  kCmdIndependentPages = 303,
  kCmdTwoDocuments = 304,

  kCmdAbout = 501,
  kCmdShortcuts = 502,
  kCmdCheckUpdates = 503,
  kCmdUserGuide = 504,
  kCmdSecurityInfo = 505,

  kCmdAnnotationPanel = 601,
  kCmdSave = 602,
  kCmdSaveAs = 604,
  kCmdSaveAll = 605,
  kCmdDiscardAll = 606,

  kCmdFind = 701,
  kCmdCopy = 702,
  kCmdSelectAll = 703,
  kCmdPaste = 704,
  kCmdSettings = 705,
  kCmdFlatten = 706,
  kCmdDiscardChanges = 707,
  kCmdDeletePage = 708,
  kCmdRecentFirst = 709,
  kCmdRecentLast = 718,
  kCmdRemoveAnnotations = 719,
  kCmdInsertAbove = 725,
  kCmdInsertBelow = 726,
  kCmdHighlight = 727,
  kCmdStrikethrough = 728,
  kCmdRemoveMarkup = 729,
  kCmdNote = 730,
  kCmdMarkupSummary = 731,
  kCmdMarkUp = 732,
  kCmdEditText = 733,
};

}  // namespace quillmere
