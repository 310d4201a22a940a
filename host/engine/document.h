#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/annots_index.h"
#include "engine/context.h"
#include "engine/geometry.h"
#include "engine/mupdf_types.h"
#include "engine/page_map.h"
#include "engine/page_object_type.h"
#include "engine/rgb_image.h"

struct fz_context;
struct pdf_document;

namespace pdfhost::engine {

// One open PDF document. Movable, not copyable; closes the MuPDF document when destroyed.
// Its Context must outlive it. Pages are numbered from 0; a page number out of range throws
// Error.
class Document {
  public:
    // Opens a PDF file. Throws Error naming the path and the reason for a missing file, a file
    // that is not a PDF, a damaged file MuPDF cannot repair, or a wrong password. The password
    // is tried when the file is encrypted; given the owner password, every permission is
    // granted.
    static Document Open(Context& context, const std::string& path,
                         const std::string& password = {});

    // A new, unsaved document of one empty US-Letter page (612 x 792 pt); Path() is empty.
    static Document CreateBlank(Context& context);

    // Takes ownership of a MuPDF document (for the factory); `path` may be empty.
    Document(Context& context, pdf_document* doc, std::string path, std::uint32_t permissions);

    Document(Document&& other) noexcept;
    Document& operator=(Document&& other) noexcept;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    ~Document();

    int PageCount() const;

    // The dictionary of a page (a reference the caller owns) and the page loaded, each found
    // through the page map. Throw Error("<what>: <reason>") when MuPDF cannot find or load it.
    ObjPtr PageObject(int page, std::string_view what) const;
    PagePtr LoadPage(int page, std::string_view what) const;

    // Loads MuPDF's page map (see PageMap). Called by Open and by the factory once the pages
    // are in; the engine changes no page tree afterwards.
    void IndexPages();

    // Permission bits (see permissions.h): permission::kAll for an unencrypted document or one
    // opened with the owner password, else the bits that the encryption grants.
    std::uint32_t Permissions() const { return permissions_; }
    bool IsEncrypted() const;
    // Whether the file was damaged and rebuilt from its objects on opening: pages may be
    // missing or show less than they should.
    bool WasRepaired() const;

    // The Info dictionary: whether the trailer has one, and the raw bytes of one of its string
    // entries (a date stays in its PDF text form). Absent key or non-string value: nullopt.
    bool HasInfo() const;
    std::optional<std::string> InfoString(const std::string& key) const;
    // Sets a string entry of the Info dictionary, creating the dictionary when needed.
    void SetInfoString(const std::string& key, const std::string& bytes);

    // The objects of a page's content, in content order.
    std::vector<PageObjectType> PageObjects(int page) const;

    // The page's MediaBox (inherited if need be) in PDF page space.
    Rect PageBox(int page) const;

    // Renders a page with its annotations at `dpi` (> 0, at most 1200) as RGB.
    RgbImage Render(int page, float dpi) const;

    // Writes the whole document to `path` with unused objects removed (never incrementally),
    // keeping its encryption. The bytes go to a temporary file in the same folder that then
    // replaces `path`, so on failure `path` is untouched and no temporary file remains.
    // Throws Error on failure. On success Path() becomes `path`.
    void SaveFull(const std::string& path);
    // Writes the document to `path` as SaveFull does, but Path() stays what it was: a copy.
    void WriteCopy(const std::string& path) const;

    // Grows with every change made through this class; callers that change the document
    // through pdf() call MarkChanged().
    std::uint64_t Revision() const { return revision_; }
    void MarkChanged() { ++revision_; }

    // What goes with an annotation when it leaves its page (kept by Annotations).
    AnnotsIndex& Index() { return index_; }

    // The file the document was opened from or last saved to; empty for a new document.
    const std::string& Path() const { return path_; }

    Context& context() const { return *context_; }
    fz_context* fz() const;
    pdf_document* pdf() const { return doc_; }

  private:
    void CheckPage(int page) const;
    pdf_document* Live() const;  // throws Error after a move
    void Close() noexcept;

    Context* context_;
    pdf_document* doc_;
    std::string path_;
    std::uint32_t permissions_;
    std::uint64_t revision_ = 0;
    PageMap pages_;
    AnnotsIndex index_;
};

}  // namespace pdfhost::engine
