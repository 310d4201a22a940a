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
// its other entries, for an object that stands in /Annots more than once. Kept per /Annots array
// (pages that share one array share its part) so that taking a mark off a page of many thousands
// reads none of the others. A part comes from one reading of the array and holds a reference to
// it; it is read again when the array has another length than the changes reported here left it
// with. Changes to an entry's own dictionary, and changes past the engine that keep the length,
// are not seen. At most kParts arrays are remembered.
class AnnotsIndex {
  public:
    static constexpr std::size_t kParts = 64;
    struct Companions {
        std::vector<int> popups;
        bool repeated = false;  // the object stands in the array more than once
    };
    // What goes with `object` from `annots` (a page's /Annots array). Call inside CallMupdf.
    Companions Of(fz_context* ctx, pdf_obj* annots, int object);
    // Reports that `entry`, a new object, was put into `annots` (one entry more than before).
    // Call inside CallMupdf.
    void Added(fz_context* ctx, pdf_obj* annots, pdf_obj* entry);
    // Reports that every entry of `objects` was taken out of `annots`, `count` entries in all.
    // Call inside CallMupdf.
    void Removed(fz_context* ctx, pdf_obj* annots, const std::vector<int>& objects, int count);
    // Array objects the engine made for one page's /Annots (no other page refers to them).
    void Own(int object) { own_.insert(object); }
    bool IsOwn(int object) const { return own_.contains(object); }
    // The array is read again on its next use. Call inside CallMupdf.
    void Forget(fz_context* ctx, pdf_obj* annots) {
        parts_.erase(pdf_resolve_indirect(ctx, annots));
    }
    // Drops every part (and its reference to its array).
    void Clear() {
        parts_.clear();
        own_.clear();
    }

  private:
    struct Part {
        ObjPtr annots;
        int length = 0;
        std::unordered_map<int, std::vector<int>> byParent;
        std::unordered_map<int, int> ownerOf;  // popup -> the annotation it belongs to
        std::vector<int> repeated;             // objects that stand more than once, sorted
        void Add(int popup, int owner);
        void Drop(int object);  // as a popup, as an owner and as a repeated entry
    };
    // The array's part if it still describes it as `length` entries long, else null.
    Part* Valid(fz_context* ctx, pdf_obj* annots, int length);
    Part& Read(fz_context* ctx, pdf_obj* annots, int length);

    std::unordered_map<const pdf_obj*, Part> parts_;  // by the resolved array
    std::vector<int> numbers_;                        // the entries' numbers while one is read
    std::unordered_set<int> own_;
};

}  // namespace pdfhost::engine
