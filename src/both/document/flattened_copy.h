// FlattenedCopy: a scratch copy of a document's file in the temporary folder, opened hidden in the
// editor with its form fields flattened into page content, so that the page text holds what is
// typed into the fields. The copy is closed and its file deleted when the object goes.
#pragma once

#include <filesystem>
#include <string>

#include "host/host_abi.h"

struct DocumentServices;

class FlattenedCopy {
  public:
    explicit FlattenedCopy(const DocumentServices& services) : services_(services) {}
    // Closes the copy, deletes its file and, outside a batch, shows the task pane again, since the
    // close may have hidden it.
    ~FlattenedCopy();
    FlattenedCopy(const FlattenedCopy&) = delete;
    FlattenedCopy& operator=(const FlattenedCopy&) = delete;

    // Copies the file of `source`, opens the copy, flattens pages [firstPage, endPage) and saves
    // it. Returns 0, or the bridge code of the step that failed.
    int32_t Make(HostDoc source, int firstPage, int endPage);

    // The PDF object of the opened copy; null until Make got that far.
    NdxDoc pdf() const { return pdf_; }

  private:
    // Copies `from` to the scratch path `to`; false when the source is missing or the copy fails.
    bool CopyFile(const std::filesystem::path& from, std::filesystem::path to);

    const DocumentServices& services_;
    std::filesystem::path scratch_;  // empty until the file is copied
    HostDoc copy_ = nullptr;
    NdxDoc pdf_ = nullptr;
};
