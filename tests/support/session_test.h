#pragma once

#include <fpdfview.h>
#include <gtest/gtest.h>

#include <list>
#include <string>

#include "platform/stand_in.h"
#include "session/session.h"

namespace quillmere::test {

// A test of logic that works on the session: PDFium is started, the session and the machine are
// fresh, and the window's client area has 1000 by 800 pixels with a status bar of 22.
class SessionTest : public ::testing::Test {
 protected:
  SessionTest();
  ~SessionTest() override;

  // Writes a file and returns its path. A name without a volume goes below "C:\".
  static std::u16string putPdf(const std::u16string& name, const std::string& bytes);

  // Opens a document as the one that the single-document modes share, with no page open. The
  // session closes it. Null, with no document set, when PDFium refuses the bytes.
  FPDF_DOCUMENT openInActive(const std::string& bytes,
                             const std::u16string& path = u"C:\\active.pdf");

  // Handles the messages that the logic has posted to the main window.
  static void deliverPosted();

  // Opens a document as the pane's own, in TwoDocuments.
  FPDF_DOCUMENT openInPane(int pane, const std::string& bytes);
  FPDF_DOCUMENT openInPane(int pane, const std::string& bytes, const std::u16string& path);

  // A document that nothing holds yet; null when PDFium refuses the bytes.
  DocumentHandle loadDocument(const std::string& bytes);

 private:
  std::list<std::string> keptBytes_;  // PDFium reads from them as long as the documents are open
};

}  // namespace quillmere::test
