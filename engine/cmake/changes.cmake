# The few places where PDFium's own files are compiled with a change.

# change_source(FILE ADD_BEFORE|ADD_AFTER|REPLACE ANCHOR TEXT): FILE, relative to
# PDFIUM_DIR, gets lines before, after or in place of the one place where the text
# ANCHOR stands.
function(change_source file where anchor text)
  if(file IN_LIST changed_files)
    set(content "${content_of_${file}}")
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
  elseif(where STREQUAL "ADD_AFTER")
    string(REPLACE "${anchor}" "${anchor}\n${text}" content "${content}")
  else()
    string(REPLACE "${anchor}" "${text}" content "${content}")
  endif()
  set(content_of_${file} "${content}" PARENT_SCOPE)
endfunction()

# Forms that draw themselves, or are drawn very often; see form_nesting.h.
change_source(core/fpdfapi/page/cpdf_form.h
  ADD_BEFORE "class CFX_Matrix;" "#include \"form_nesting.h\"\n")
change_source(core/fpdfapi/page/cpdf_form.h
  ADD_AFTER "    std::set<const uint8_t*> parsed_set;" "    FormNesting nesting;")
set(parser core/fpdfapi/page/cpdf_streamcontentparser.cpp)
change_source(${parser} ADD_BEFORE "  CPDF_AllStates status;"
  "  FormNesting::Opened opened(recursion_state_->nesting, pStream.Get());\n  if (!opened) {\n    return;\n  }")
change_source(${parser} ADD_AFTER "  form->ParseContent(&status, nullptr, recursion_state_);"
  "  opened.Count(form->GetPageObjectCount());")

# Which data of a stream is not the file's; see release.cpp.
set(stream core/fpdfapi/parser/cpdf_stream)
change_source(${stream}.h ADD_AFTER "  bool HasFilter() const;"
  "  bool has_new_data() const { return has_new_data_; }")
change_source(${stream}.h ADD_BEFORE
  "  std::variant<RetainPtr<IFX_SeekableReadStream>, DataVector<uint8_t>> data_;"
  "  bool has_new_data_ = false;")
change_source(${stream}.cpp ADD_BEFORE
  "  DataVector<uint8_t> data_copy(pData.begin(), pData.end());" "  has_new_data_ = true;")

# What a document knows for drawn_objects.h and page_indexes.h.
set(document core/fpdfapi/parser/cpdf_document)
change_source(${document}.h ADD_BEFORE "class CPDF_ReadValidator;"
  "#include \"drawn_objects.h\"\n#include \"page_indexes.h\"\n")
change_source(${document}.h ADD_AFTER "  void SetRootForTesting(RetainPtr<CPDF_Dictionary> root);"
  "  DrawnObjects& drawn_objects() { return drawn_objects_; }
  const DrawnObjects& drawn_objects() const { return drawn_objects_; }
  PageIndexes& page_indexes() { return page_indexes_; }")
change_source(${document}.h ADD_AFTER "  std::set<uint32_t> modified_apstream_ids_;"
  "  DrawnObjects drawn_objects_;\n  PageIndexes page_indexes_;\n  int traversal_steps_left_ = 0;")

# Page trees that lead back into themselves or reach the same empty nodes again and again.
change_source(${document}.cpp ADD_BEFORE "namespace {" "#include \"page_tree_limits.h\"\n")
change_source(${document}.cpp REPLACE
  "FindPageIndex(pPages, &skip_count, objnum, &start_index, 0);" "page_indexes_.Of(*this, objnum);")
change_source(${document}.cpp ADD_AFTER
  "  page_list_.insert(page_list_.begin() + iPage, pPageDict->GetObjNum());" "  page_indexes_.Forget();")
change_source(${document}.cpp ADD_AFTER
  "  page_list_.erase(page_list_.begin() + iPage);" "  page_indexes_.Forget();")
change_source(${document}.cpp ADD_BEFORE
  "  RetainPtr<CPDF_Dictionary> pPage = TraversePDFPages(iPage, &nPagesToGo, 0);"
  "  traversal_steps_left_ = kMostPageTreeSteps;")
change_source(${document}.cpp ADD_BEFORE "    pKidList->ConvertToIndirectObjectAt(i, this);"
  "    if (--traversal_steps_left_ < 0) {
      reached_max_page_level_ = true;
      return nullptr;
    }")
# Without counts in the file an empty node is counted once, and not below the deepest level.
change_source(${document}.cpp REPLACE "      ScopedSetInsertion local_add(visited_pages, kid_dict);"
  "      const RetainPtr<CPDF_Dictionary> counted = kid_dict;
      visited_pages->insert(counted);
      if (visited_pages->size() > 2 * kDeepestPageTreeLevel) {
        return std::nullopt;
      }")
change_source(${document}.cpp ADD_AFTER "      count += local_count.value();"
  "      if (local_count.value() > 0) {
        visited_pages->erase(counted);
      }")
# Where pages come and go, a child that is no dictionary takes an index too.
change_source(${document}.cpp REPLACE
  "    RetainPtr<CPDF_Dictionary> kid_dict = kids_list->GetMutableDictAt(i);\n    NodeType kid_type"
  "    RetainPtr<CPDF_Dictionary> kid_dict = kids_list->GetMutableDictAt(i);
    if (!kid_dict) {
      if (pages_to_go-- == 0) {
        return false;
      }
      continue;
    }
    NodeType kid_type")
change_source(${document}.cpp REPLACE "    if (pdfium::Contains(*visited, kid_dict)) {"
  "    if (visited->size() > kDeepestPageTreeLevel || pdfium::Contains(*visited, kid_dict)) {")

# Form fields are drawn with the other annotations, and what drawing adds to the document is noted.
set(render fpdfsdk/cpdfsdk_renderpage.cpp)
change_source(${render} REPLACE "const bool bShowWidget = false;" "const bool bShowWidget = true;")
change_source(${render} ADD_BEFORE "    auto pOwnedList = std::make_unique<CPDF_AnnotList>(pPage);"
  "    DrawnObjects::Scope drawn(*pPage->GetDocument());")

# Fields get the appearance they lack; nothing shows pop-up annotations, so none are made.
set(annotations core/fpdfdoc/cpdf_annotlist.cpp)
change_source(${annotations} ADD_BEFORE "namespace {" "#include \"field_appearance.h\"\n")
change_source(${annotations} REPLACE
  "    if (bRegenerateAP && subtype == \"Widget\" &&
        CPDF_InteractiveForm::IsUpdateAPEnabled() &&
        !dict->GetDictFor(pdfium::annotation::kAP)) {
      GenerateAP(document_, dict.Get());"
  "    if (subtype == \"Widget\" && FieldNeedsAppearance(*document_, *dict, bRegenerateAP)) {
      MakeFieldAppearance(*dict, [&] { GenerateAP(document_, dict.Get()); });")
change_source(${annotations} REPLACE "  for (size_t i = 0; i < annot_count_; ++i) {
    std::unique_ptr<CPDF_Annot> pPopupAnnot =
        CreatePopupAnnot(document_, page_, annot_list_[i].get());
    if (pPopupAnnot) {
      annot_list_.push_back(std::move(pPopupAnnot));
    }
  }\n" "")

# A mark's box holds all four corners of its quads, whatever their order.
change_source(core/fpdfdoc/cpdf_annot.cpp REPLACE "  return CFX_FloatRect(
      pArray->GetFloatAt(4 + nIndex * 8), pArray->GetFloatAt(5 + nIndex * 8),
      pArray->GetFloatAt(2 + nIndex * 8), pArray->GetFloatAt(3 + nIndex * 8));"
  "  const size_t first = 8 * nIndex;
  CFX_FloatRect box(pArray->GetFloatAt(first), pArray->GetFloatAt(first + 1),
                    pArray->GetFloatAt(first), pArray->GetFloatAt(first + 1));
  for (size_t corner = first + 2; corner < first + 8; corner += 2) {
    box.UpdateRect(CFX_PointF(pArray->GetFloatAt(corner), pArray->GetFloatAt(corner + 1)));
  }
  return box;")

# XMP stays as the source has it: packed, and encrypted unless the document leaves it readable.
change_source(core/fpdfapi/parser/cpdf_flateencoder.cpp REPLACE
  "  if (bHasFilter && !bFlateEncode) {
    auto pDestAcc = pdfium::MakeRetain<CPDF_StreamAcc>(pStream);
    pDestAcc->LoadAllDataFiltered();

    data_ = acc_->GetSpan();
    cloned_dict_ = ToDictionary(pStream->GetDict()->Clone());
    cloned_dict_->RemoveFor(\"Filter\");
    DCHECK(!dict_);
    return;
  }
" "")
change_source(${stream}.cpp REPLACE "  if (encryptor && !is_metadata) {" "  if (encryptor) {")
set(creator core/fpdfapi/edit/cpdf_creator)
change_source(${creator}.cpp ADD_BEFORE "namespace {" "#include \"plain_metadata.h\"\n")
change_source(${creator}.cpp REPLACE "  if (GetCryptoHandler() && pObj != encrypt_dict_) {"
  "  if (GetCryptoHandler() && pObj != encrypt_dict_ &&
      !IsPlainMetadata(*document_, *security_handler_, objnum)) {")

# The trailer names an encryption dictionary that stood in it by the number under which it was
# written. The key of revision 4 is made from the identifier, so a file without one gets none.
change_source(${creator}.cpp REPLACE "      dwObjNum = document_->GetLastObjNum() + 1;"
  "      dwObjNum = last_obj_num_;")
change_source(${creator}.cpp ADD_AFTER "      security_changed_ = true;\n    }"
  "    if (revision == 4) {
      id_array_.Reset();
    }")

# The table of a whole file has one section without gaps. Poppler takes a file with gaps for damaged
# when it comes upon a long string. A few objects with large numbers are not worth a megabyte of rows.
change_source(${creator}.cpp REPLACE "      while (i <= dwLastObjNum && !pdfium::Contains(object_offsets_, i)) {"
  "      while (sparse && i <= dwLastObjNum && !pdfium::Contains(object_offsets_, i)) {")
change_source(${creator}.cpp REPLACE
  "      while (j <= dwLastObjNum && pdfium::Contains(object_offsets_, j)) {"
  "      while (j <= dwLastObjNum && (!sparse || pdfium::Contains(object_offsets_, j))) {")
change_source(${creator}.cpp REPLACE
  "        str = ByteString::Format(\"%010d 00000 n\\r\\n\", object_offsets_[i++]);"
  "        const auto place = object_offsets_.find(i++);
        str = place == object_offsets_.end()
                  ? ByteString(\"0000000000 65535 f\\r\\n\")
                  : ByteString::Format(\"%010d 00000 n\\r\\n\", place->second);")
change_source(${creator}.cpp REPLACE "        str = pdfium::Contains(object_offsets_, 1)"
  "        str = !sparse || pdfium::Contains(object_offsets_, 1)")

# What was made and taken back since the document was loaded is not written: a signature that the
# user deleted must not stay in the file.
change_source(${creator}.cpp ADD_AFTER "      GetObjectsWithReferences(document_);"
  "  std::erase_if(new_obj_num_array_, [&](uint32_t number) {
    return !pdfium::Contains(objects_with_refs, number);
  });")

# An array of an inserted page keeps its other entries when one leads nowhere.
set(organizer core/fpdfapi/edit/cpdf_pageorganizer.cpp)
change_source(${organizer} ADD_AFTER "#include \"core/fpdfapi/parser/cpdf_name.h\""
  "#include \"core/fpdfapi/parser/cpdf_null.h\"")
change_source(${organizer} REPLACE "        if (!UpdateReference(array->GetMutableObjectAt(i))) {"
  "        if (array->GetObjectAt(i)->IsReference() && !array->GetDirectObjectAt(i)) {
          array->SetNewAt<CPDF_Null>(i);
        } else if (!UpdateReference(array->GetMutableObjectAt(i))) {")

# Nodes above a page of the source may lead back to themselves.
change_source(${organizer} ADD_AFTER "#include \"core/fpdfapi/parser/cpdf_null.h\""
  "#include \"page_tree_limits.h\"")
change_source(${organizer} REPLACE "  while (pp) {"
  "  for (size_t level = 0; pp && level < kDeepestPageTreeLevel; ++level) {")

# A page that does not name its type is a page all the same.
change_source(${organizer} REPLACE "  if (!dict->KeyExist(pdfium::page_object::kParent) ||
      !dict->KeyExist(pdfium::page_object::kType)) {"
  "  if (!dict->KeyExist(pdfium::page_object::kParent)) {")
change_source(${organizer} REPLACE "      ToName(dict->GetObjectFor(pdfium::page_object::kType)->GetDirect());"
  "      ToName(dict->GetDirectObjectFor(pdfium::page_object::kType));")
change_source(${organizer} REPLACE "  if (!name || name->GetString() != \"Page\") {"
  "  if (name && name->GetString() != \"Page\") {")

# An inserted page keeps its shape.
set(exporter core/fpdfapi/edit/cpdf_pageexporter.cpp)
change_source(${exporter} ADD_AFTER "#include \"core/fpdfapi/parser/cpdf_object.h\""
  "#include \"page_shape.h\"")
change_source(${exporter} ADD_AFTER "                    pdfium::page_object::kRotate);"
  "    KeepOwnShape(*dest_page_dict);")

# Objects stay packed; see object_packer.h.
change_source(${creator}.h ADD_BEFORE "class CPDF_Array;" "#include \"object_packer.h\"\n")
change_source(${creator}.h ADD_AFTER "  bool subset_new_fonts_ = false;"
  "  std::unique_ptr<ObjectPacker> packer_;")
change_source(${creator}.cpp ADD_AFTER
  "bool CPDF_Creator::WriteIndirectObj(uint32_t objnum, const CPDF_Object* pObj) {"
  "  if (packer_ && packer_->Takes(objnum, *pObj, !!GetCryptoHandler(), encrypt_dict_.Get())) {
    return packer_->Add(objnum, *pObj, *archive_, GetCryptoHandler());
  }")
change_source(${creator}.cpp ADD_BEFORE "      if (!archive_->WriteDWord(version % 10) ||"
  "      if (packer_ && version < 15) {
        version = 15;
      }")
change_source(${creator}.cpp ADD_AFTER "  if (stage_ == Stage::kWriteEncryptDict27) {"
  "    if (packer_) {
      if (!packer_->Finish(*archive_, GetCryptoHandler())) {
        return Stage::kInvalid;
      }
      last_obj_num_ = packer_->last_number();
    }")
change_source(${creator}.cpp ADD_AFTER "  uint32_t dwLastObjNum = last_obj_num_;"
  "  if (packer_) {
    uint32_t encryption = encrypt_dict_ ? encrypt_dict_->GetObjNum() : 0;
    if (encrypt_dict_ && encryption == 0) {
      encryption = last_obj_num_;
    }
    if (!packer_->WriteCrossReferences(*archive_, last_obj_num_ + 1, object_offsets_, encryption,
                                       id_array_.Get())) {
      return Stage::kInvalid;
    }
    stage_ = Stage::kComplete100;
    return stage_;
  }
  const bool sparse = dwLastObjNum > 50000 && dwLastObjNum / 8 > object_offsets_.size();")
change_source(${creator}.cpp ADD_AFTER "  subset_new_fonts_ = !!(flags & CreateFlags::kSubsetNewFonts);"
  "  packer_ = is_incremental_ ? nullptr : ObjectPacker::For(*document_);")

# Pictures at odd angles lie where their matrix puts them; see turned_images.h.
set(transformer core/fxge/dib/cfx_imagetransformer.cpp)
change_source(${transformer} ADD_BEFORE "namespace {" "#include \"turned_images.h\"\n")
change_source(${transformer} REPLACE "  CFX_BilinearMatrix matrix_fix(calc_data.matrix);"
  "  const TurnedImage matrix_fix(calc_data.matrix, clip_rect.Width(), clip_rect.Height());")

# The changed copies lie under CHANGED_DIR by the names of PDFium's files.
set(CHANGED_DIR ${CMAKE_CURRENT_BINARY_DIR}/changed)
foreach(file IN LISTS changed_files)
  set(content "${content_of_${file}}")
  file(CONFIGURE OUTPUT ${CHANGED_DIR}/${file} CONTENT "@content@" @ONLY)
endforeach()
