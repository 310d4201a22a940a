// One document open in the host: its number, its engine document, the state the editor shows
// (modified, temporary, hidden) and the PDF objects handed out for it.
#pragma once

#include <memory>
#include <string>

#include "doc_view.h"
#include "engine/document.h"
#include "form_state.h"
#include "host_abi.h"
#include "page_text_cache.h"
#include "pdf_object_handles.h"
#include "search_memory.h"
#include "searched_terms.h"

namespace pdfhost {

enum class DocumentKind {
    kFile,       // opened from a file, shown in a tab
    kHidden,     // opened from a file without a tab
    kTemporary,  // made new, lives on no file until saved
};

class HostDocument {
  public:
    HostDocument(int number, engine::Document document, DocumentKind kind);
    HostDocument(const HostDocument&) = delete;
    HostDocument& operator=(const HostDocument&) = delete;

    int Number() const { return number_; }
    HostDoc Handle() const { return handle_; }
    NdxDoc PdfHandle() const { return pdfHandle_; }

    engine::Document& Engine() { return document_; }
    const engine::Document& Engine() const { return document_; }
    PdfObjectHandles& Objects() { return objects_; }
    // The numbered text of its pages, the last search of each page, and its form's handles.
    PageTextCache& TextCache() { return textCache_; }
    SearchMemory& Searches() { return searches_; }
    // Every term searched on its pages, for the apply to remove wherever else it stands.
    SearchedTerms& Terms() { return terms_; }
    FormState& Form() { return form_; }
    // The view of its tab; null for a hidden document.
    DocView* View() { return view_.get(); }
    const DocView* View() const { return view_.get(); }

    // The file path; empty for a new document that was never saved.
    const std::string& Path() const { return document_.Path(); }
    // The file name with its extension; a new document is named "Untitled-<number>.pdf".
    std::string FileName() const;

    // After a save under a path: a temporary document now lives on that file.
    void SavedToFile();

    bool IsHidden() const { return kind_ == DocumentKind::kHidden; }
    bool IsTemporary() const { return kind_ == DocumentKind::kTemporary; }
    bool IsModified() const { return modified_; }
    // Returns whether the flag changed.
    bool SetModified(bool modified);

    // Set while the closing hooks run, so that a second close of the same document is ignored.
    bool IsClosing() const { return closing_; }
    void MarkClosing() { closing_ = true; }

  private:
    int number_;
    HostDoc handle_;
    NdxDoc pdfHandle_;
    DocumentKind kind_;
    bool modified_ = false;
    bool closing_ = false;
    engine::Document document_;
    // Declared after the document: its references are dropped before the document closes.
    PdfObjectHandles objects_;
    PageTextCache textCache_;
    SearchMemory searches_;
    SearchedTerms terms_;
    FormState form_;
    std::unique_ptr<DocView> view_;
};

}  // namespace pdfhost
