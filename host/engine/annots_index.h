#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "engine/mupdf_types.h"

namespace pdfhost::engine {

// The object number of the annotation that the popup at `entry` (an /Annots entry) belongs
// to: its /Parent, or /P; 0 when the entry is no popup object. Call inside CallMupdf.
int PopupOwner(fz_context* ctx, pdf_obj* entry);

// What else goes when an annotation leaves a page: its popups (by their /Parent, or /P) and
// its other entries, for an object that stands in /Annots more than once. Kept per page so
// that taking a mark off a page of many thousands reads none of the others. A page's part
// comes from one reading of the array and holds a reference to it; it is read again when the
// page's array is another object, or has another length than the changes reported here left
// it with. Changes to an entry's own dictionary are not seen.
class AnnotsIndex {
  public:
    struct Companions {
        std::vector<int> popups;
        bool repeated = false;  // the object stands in the array more than once
    };
    // What goes with `object` on `page`, whose resolved /Annots array is `annots`. Call inside
    // CallMupdf.
    Companions Of(fz_context* ctx, int page, pdf_obj* annots, int object);
    // Reports that `entry`, a new object, was put into `annots` (one entry more than before).
    // Call inside CallMupdf.
    void Added(fz_context* ctx, int page, pdf_obj* annots, pdf_obj* entry);
    // Reports that every entry of `objects` was taken out of `annots`, `count` entries in all.
    void Removed(fz_context* ctx, int page, pdf_obj* annots, const std::vector<int>& objects,
                 int count);
    // Array objects the engine made for one page's /Annots (no other page refers to them).
    void Own(int object) { own_.insert(object); }
    bool IsOwn(int object) const { return own_.contains(object); }
    // The page is read again on its next use.
    void Forget(int page) { pages_.erase(page); }
    // Drops every page's part (and its reference to the array).
    void Clear() {
        pages_.clear();
        own_.clear();
    }

  private:
    struct Page {
        ObjPtr annots;
        int length = 0;
        std::unordered_map<int, std::vector<int>> byParent;
        std::unordered_map<int, int> ownerOf;  // popup -> the annotation it belongs to
        std::vector<int> repeated;             // objects that stand more than once, sorted
        void Add(int popup, int owner);
        void Drop(int object);  // as a popup, as an owner and as a repeated entry
    };
    // The page's part if it still describes `annots` as `length` entries long, else null.
    Page* Valid(fz_context* ctx, int page, pdf_obj* annots, int length);
    Page& Read(fz_context* ctx, int page, pdf_obj* annots, int length);

    std::unordered_map<int, Page> pages_;
    std::vector<int> numbers_;  // the entries' numbers while a page is read
    std::unordered_set<int> own_;
};

}  // namespace pdfhost::engine
