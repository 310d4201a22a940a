#pragma once

#include "engine/document.h"

namespace pdfhost::engine {

// Makes a series of changes to a document all-or-nothing: every object changed between the
// constructor and Commit() is recorded, and unless Commit() is reached the destructor puts
// each one back as it was (MuPDF's journal, kept only for the transaction's life). While a
// transaction is open, every change to the document must go through it.
class DocumentTransaction {
  public:
    // Throws Error when MuPDF cannot start recording.
    DocumentTransaction(Document& document, const char* name);
    ~DocumentTransaction();
    DocumentTransaction(const DocumentTransaction&) = delete;
    DocumentTransaction& operator=(const DocumentTransaction&) = delete;

    // Keeps the changes. Throws Error when MuPDF cannot end the recording; the changes are then
    // undone by the destructor.
    void Commit();

  private:
    Document& document_;
    bool ownsJournal_ = false;
    int stepsBefore_ = 0;
    bool open_ = false;
    bool committed_ = false;
};

}  // namespace pdfhost::engine
