# The few places where PDFium's own files are compiled with a change.

# change_source(FILE [ADD_BEFORE | ADD_AFTER] ANCHOR TEXT): FILE, relative to
# PDFIUM_DIR, gets lines before or after the one place where the text ANCHOR
# stands. The changed copy lies under CHANGED_DIR by the same name.
set(CHANGED_DIR ${CMAKE_CURRENT_BINARY_DIR}/changed)

function(change_source file where anchor text)
  set(copy ${CHANGED_DIR}/${file})
  if(file IN_LIST changed_files)
    file(READ ${copy} content)
  else()
    file(READ ${PDFIUM_DIR}/${file} content)
    set(changed_files ${changed_files} ${file} PARENT_SCOPE)
  endif()
  string(FIND "${content}" "${anchor}" first)
  string(FIND "${content}" "${anchor}" last REVERSE)
  if(first EQUAL -1 OR NOT first EQUAL last)
    message(FATAL_ERROR "${file} must hold this once, for the engine to be built with its change: ${anchor}")
  endif()
  if(where STREQUAL "ADD_BEFORE")
    string(REPLACE "${anchor}" "${text}\n${anchor}" content "${content}")
  else()
    string(REPLACE "${anchor}" "${anchor}\n${text}" content "${content}")
  endif()
  file(WRITE ${copy} "${content}")
endfunction()

# Forms that draw themselves; see form_nesting.h.
change_source(core/fpdfapi/page/cpdf_form.h
  ADD_BEFORE "class CFX_Matrix;" "#include \"form_nesting.h\"\n")
change_source(core/fpdfapi/page/cpdf_form.h
  ADD_AFTER "    std::set<const uint8_t*> parsed_set;" "    FormNesting nesting;")
set(parser core/fpdfapi/page/cpdf_streamcontentparser.cpp)
change_source(${parser} ADD_BEFORE "  CPDF_AllStates status;"
  "  FormNesting::Opened opened(recursion_state_->nesting, pStream.Get());\n  if (!opened) {\n    return;\n  }")
change_source(${parser} ADD_AFTER "  form->ParseContent(&status, nullptr, recursion_state_);"
  "  opened.Count(form->GetPageObjectCount());")
