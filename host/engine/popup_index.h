#pragma once

#include <unordered_map>
#include <vector>

#include "engine/mupdf_types.h"

namespace pdfhost::engine {

// The object number of the annotation that the popup at `entry` (an /Annots entry) belongs
// to: its /Parent, or /P; 0 when the entry is no popup object. Call inside CallMupdf.
int PopupOwner(fz_context* ctx, pdf_obj* entry);

// The popups on each page's /Annots, by the annotation each belongs to (its /Parent, or /P):
// taking an annotation off a page that holds many thousands then finds its popups without
// reading every entry. A page's part comes from one reading of the array and holds a reference
// to it; it is read again when the page's array is another object, or has another length than
// the changes reported here left it with. Changes to an entry's own dictionary are not seen.
class PopupIndex {
  public:
    // The popups on `page`, whose resolved /Annots array is `annots`, that belong to `parent`.
    // Call inside CallMupdf.
    std::vector<int> Of(fz_context* ctx, int page, pdf_obj* annots, int parent);
    // Reports that `entry` was put into `annots` (one entry more than before). Call inside
    // CallMupdf.
    void Added(fz_context* ctx, int page, pdf_obj* annots, pdf_obj* entry);
    // Reports that `objects` (annotations and popups) were taken out of `annots`, `count`
    // entries in all.
    void Removed(fz_context* ctx, int page, pdf_obj* annots, const std::vector<int>& objects,
                 int count);
    // The page is read again on its next use.
    void Forget(int page) { pages_.erase(page); }
    // Drops every page's part (and its reference to the array).
    void Clear() { pages_.clear(); }

  private:
    struct Page {
        ObjPtr annots;
        int length = 0;
        std::unordered_map<int, std::vector<int>> byParent;
        std::unordered_map<int, int> ownerOf;  // popup -> the annotation it belongs to
        void Add(int popup, int owner);
        void Drop(int object);  // as a popup and as an owner
    };
    // The page's part if it still describes `annots` as `length` entries long, else null.
    Page* Valid(fz_context* ctx, int page, pdf_obj* annots, int length);

    std::unordered_map<int, Page> pages_;
};

}  // namespace pdfhost::engine
