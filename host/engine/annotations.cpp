#include "engine/annotations.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "engine/annots_index.h"
#include "engine/error.h"
#include "engine/mupdf_call.h"

namespace pdfhost::engine {
namespace {

// pdf_create_annot_raw hands its caller a reference to the live annotation.
using AnnotPtr = MupdfPtr<pdf_annot, pdf_drop_annot>;

// The object number of an /Annots entry that refers to a dictionary, else 0.
int AnnotationObject(fz_context* ctx, pdf_obj* entry) {
    if (!pdf_is_indirect(ctx, entry) || !pdf_is_dict(ctx, entry))
        return 0;
    return pdf_to_num(ctx, entry);
}

// Whether the /Annots entry refers to `object` (a number > 0): the number is compared first, so
// that a walk over many entries resolves only the one that matches.
bool RefersTo(fz_context* ctx, pdf_obj* entry, int object) {
    return pdf_is_indirect(ctx, entry) && pdf_to_num(ctx, entry) == object &&
           AnnotationObject(ctx, entry) == object;
}

// The index of `object` in `annots`, or -1.
int IndexIn(fz_context* ctx, pdf_obj* annots, int object) {
    const int count = pdf_array_len(ctx, annots);
    for (int i = 0; i < count; ++i) {
        if (object > 0 && RefersTo(ctx, pdf_array_get(ctx, annots, i), object))
            return i;
    }
    return -1;
}

// The index of `object` in `annots` nearest to `hint` (an index of the array), or -1. Entries
// taken off before an annotation move it down by as many places, so it is found in as many
// steps.
int IndexNear(fz_context* ctx, pdf_obj* annots, int object, int hint) {
    const int count = pdf_array_len(ctx, annots);
    if (RefersTo(ctx, pdf_array_get(ctx, annots, hint), object))
        return hint;
    for (int distance = 1; hint - distance >= 0 || hint + distance < count; ++distance) {
        for (const int at : {hint - distance, hint + distance}) {
            if (at >= 0 && at < count && RefersTo(ctx, pdf_array_get(ctx, annots, at), object))
                return at;
        }
    }
    return -1;
}

// The index of `object` in `annots`, looked for from `hint` outwards; a hint past the end (entries
// before it went) is looked for from the last place, a negative one from the start. -1 when it is
// not there.
int IndexFrom(fz_context* ctx, pdf_obj* annots, int object, int hint) {
    const int count = pdf_array_len(ctx, annots);
    if (hint < 0 || count == 0)
        return IndexIn(ctx, annots, object);
    return IndexNear(ctx, annots, object, std::min(hint, count - 1));
}

// Moves the last entry of `annots` to `index` (when that is a place before the end).
void MoveLastTo(fz_context* ctx, pdf_obj* annots, int index) {
    const int last = pdf_array_len(ctx, annots) - 1;
    if (index < 0 || index >= last)
        return;
    pdf_obj* entry = pdf_keep_obj(ctx, pdf_array_get(ctx, annots, last));
    pdf_array_delete(ctx, annots, last);
    pdf_array_insert_drop(ctx, annots, entry, index);
}

// Removes the entries of `annot` that `source` does not have, except its appearance (and its
// /Rect when the source gives none, since an annotation needs one).
void KeepOnlyEntriesOf(fz_context* ctx, pdf_obj* annot, pdf_obj* source) {
    for (int i = pdf_dict_len(ctx, annot) - 1; i >= 0; --i) {
        pdf_obj* key = pdf_dict_get_key(ctx, annot, i);
        if (key == PDF_NAME(AP) || pdf_dict_get(ctx, source, key) != nullptr)
            continue;
        if (key == PDF_NAME(Rect))
            continue;
        pdf_dict_del(ctx, annot, key);
    }
}

// MuPDF builds an appearance in a buffer of 1 KB and keeps that buffer as the stream's content
// until the document is saved, though the content is mostly a few dozen bytes: trimmed, each new
// annotation holds what its appearance needs.
void TrimAppearance(fz_context* ctx, pdf_document* pdf, pdf_obj* annot) {
    pdf_obj* normal = pdf_dict_getp(ctx, annot, "AP/N");
    if (!pdf_is_indirect(ctx, normal) || !pdf_is_stream(ctx, normal))
        return;
    const int number = pdf_to_num(ctx, normal);
    if (number <= 0 || number >= pdf_xref_len(ctx, pdf))
        return;
    if (fz_buffer* content = pdf_get_xref_entry_no_null(ctx, pdf, number)->stm_buf)
        fz_trim_buffer(ctx, content);
}

// Entries from which a page's /Annots array set aside becomes an object of its own.
constexpr int kOwnAnnotsObjectFrom = 32;

// Sets a page's /Annots array aside for its lifetime in favour of an empty one, so that the page
// can be loaded to make one annotation without loading every annotation it already holds (which
// made adding annotations to one page quadratic). Finish appends what the empty array gathered
// to the page's own array and puts that back; ending without Finish puts it back unchanged. A
// long array written in the page itself is moved into an object of its own first: putting a
// direct array back into the page walks all its entries, a reference costs nothing.
class AnnotsSetAside {
  public:
    AnnotsSetAside(fz_context* ctx, pdf_obj* page, std::string_view what) : ctx_(ctx), page_(page) {
        own_ = CallMupdf(ctx_, what, [&]() -> pdf_obj* {
            pdf_obj* annots = pdf_dict_get(ctx_, page_, PDF_NAME(Annots));
            if (!pdf_is_array(ctx_, annots))
                return nullptr;
            if (!pdf_is_indirect(ctx_, annots) &&
                pdf_array_len(ctx_, annots) >= kOwnAnnotsObjectFrom) {
                annots = pdf_add_object(ctx_, pdf_get_bound_document(ctx_, page_), annots);
                made_ = pdf_to_num(ctx_, annots);
            } else {
                pdf_keep_obj(ctx_, annots);
            }
            pdf_dict_put_array(ctx_, page_, PDF_NAME(Annots), 1);
            return annots;
        });
    }
    AnnotsSetAside(const AnnotsSetAside&) = delete;
    AnnotsSetAside& operator=(const AnnotsSetAside&) = delete;
    ~AnnotsSetAside() {
        if (own_ == nullptr)
            return;
        try {
            CallMupdf(ctx_, "", [&] { pdf_dict_put(ctx_, page_, PDF_NAME(Annots), own_); });
        } catch (const Error&) {
            // Out of memory while putting an entry back: nothing more can be done here.
        }
        pdf_drop_obj(ctx_, own_);
    }

    // The number of the array object made for the page's long direct array, or 0.
    int Made() const { return made_; }

    // The page's /Annots array (resolved), holding the new entries at its end.
    pdf_obj* Finish(std::string_view what) {
        return CallMupdf(ctx_, what, [&]() -> pdf_obj* {
            pdf_obj* made = pdf_dict_get(ctx_, page_, PDF_NAME(Annots));
            if (own_ == nullptr)
                return made;
            pdf_obj* annots = pdf_resolve_indirect(ctx_, own_);
            const int count = pdf_array_len(ctx_, made);
            for (int i = 0; i < count; ++i)
                pdf_array_push(ctx_, annots, pdf_array_get(ctx_, made, i));
            pdf_dict_put(ctx_, page_, PDF_NAME(Annots), own_);
            pdf_drop_obj(ctx_, own_);
            own_ = nullptr;
            return annots;
        });
    }

  private:
    fz_context* ctx_;
    pdf_obj* page_;
    pdf_obj* own_ = nullptr;  // the page's own array (maybe a reference), while set aside
    int made_ = 0;
};

}  // namespace

void Annotations::CheckPage(int page) const {
    const int count = document_.PageCount();
    if (page < 0 || page >= count) {
        throw Error("page " + std::to_string(page) + " is out of range (the document has " +
                    std::to_string(count) + " pages)");
    }
}

ObjPtr Annotations::PageObject(int page) const {
    CheckPage(page);
    return document_.PageObject(page, "cannot find page " + std::to_string(page));
}

std::vector<int> Annotations::OnPage(int page) const {
    const ObjPtr page_obj = PageObject(page);
    fz_context* ctx = document_.fz();
    const char* what = "cannot read the annotations";
    pdf_obj* annots =
        CallMupdf(ctx, what, [&] { return pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots)); });
    const int count = CallMupdf(ctx, what, [&] { return pdf_array_len(ctx, annots); });
    std::vector<int> objects;
    objects.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const int object = CallMupdf(
            ctx, what, [&] { return AnnotationObject(ctx, pdf_array_get(ctx, annots, i)); });
        if (object > 0)
            objects.push_back(object);
    }
    return objects;
}

int Annotations::IndexOf(const AnnotationId& id, int hint) const {
    if (id.object <= 0 || id.page < 0 || id.page >= document_.PageCount())
        return -1;
    const ObjPtr page_obj = PageObject(id.page);
    fz_context* ctx = document_.fz();
    return CallMupdf(ctx, "cannot read the annotations", [&] {
        pdf_obj* annots = pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots));
        return IndexFrom(ctx, annots, id.object, hint);
    });
}

int Annotations::Count(int page) const {
    const ObjPtr page_obj = PageObject(page);
    fz_context* ctx = document_.fz();
    return CallMupdf(ctx, "cannot read the annotations", [&] {
        return pdf_array_len(ctx, pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots)));
    });
}

AnnotationId Annotations::Create(int page, const PdfValue& entries, std::uintptr_t documentTag,
                                 int index) {
    const PdfValue* subtype = entries.Get("Subtype");
    if (entries.kind() != PdfValue::Kind::kDictionary || subtype == nullptr ||
        subtype->kind() != PdfValue::Kind::kName || subtype->Text().empty()) {
        throw Error("cannot make an annotation without a /Subtype name");
    }
    CheckPage(page);
    fz_context* ctx = document_.fz();
    pdf_document* pdf = document_.pdf();
    const std::string what = "cannot add an annotation to page " + std::to_string(page);
    ObjPtr source(ctx, NewPdfObject(ctx, pdf, documentTag, entries));
    const ObjPtr page_obj = PageObject(page);
    AnnotsSetAside setAside(ctx, page_obj.get(), what);
    if (setAside.Made() > 0)
        document_.Index().Own(setAside.Made());
    const PagePtr loaded = document_.LoadPage(page, what);

    struct Made {
        pdf_annot* annot;
        int object;
        bool known_type;
    };
    const Made made = CallMupdf(ctx, what, [&] {
        const enum pdf_annot_type type = pdf_annot_type_from_string(ctx, subtype->Text().c_str());
        const bool known = type != PDF_ANNOT_UNKNOWN;
        pdf_annot* annot = pdf_create_annot_raw(ctx, loaded.get(), known ? type : PDF_ANNOT_SQUARE);
        pdf_obj* obj = pdf_annot_obj(ctx, annot);
        const int count = pdf_dict_len(ctx, source.get());
        for (int i = 0; i < count; ++i) {
            pdf_dict_put(ctx, obj, pdf_dict_get_key(ctx, source.get(), i),
                         pdf_dict_get_val(ctx, source.get(), i));
        }
        return Made{annot, pdf_to_num(ctx, obj), known};
    });
    const AnnotPtr owned(ctx, made.annot);
    pdf_obj* annots = setAside.Finish(what);
    CallMupdf(ctx, what, [&] {
        MoveLastTo(ctx, annots, index);
        document_.Index().Added(ctx, annots, pdf_annot_obj(ctx, made.annot));
    });
    document_.MarkChanged();

    // An appearance that cannot be built leaves the annotation without one; it still stands.
    const bool wants_appearance =
        made.known_type && CallMupdf(ctx, what, [&] {
            return pdf_dict_get(ctx, source.get(), PDF_NAME(AP)) == nullptr;
        });
    if (wants_appearance) {
        try {
            CallMupdf(ctx, what, [&] {
                pdf_dirty_annot(ctx, made.annot);
                pdf_update_annot(ctx, made.annot);
                TrimAppearance(ctx, pdf, pdf_annot_obj(ctx, made.annot));
            });
        } catch (const Error&) {
        }
    }
    CallMupdf(ctx, what, [&] {
        pdf_obj* obj = pdf_annot_obj(ctx, made.annot);
        KeepOnlyEntriesOf(ctx, obj, source.get());
        if (pdf_obj* rect = pdf_dict_get(ctx, source.get(), PDF_NAME(Rect)))
            pdf_dict_put(ctx, obj, PDF_NAME(Rect), rect);
    });
    return AnnotationId{page, made.object};
}

std::optional<RemovedAnnotation> Annotations::Remove(const AnnotationId& id, int hint) {
    if (id.object <= 0)
        return std::nullopt;
    const ObjPtr page_obj = PageObject(id.page);
    fz_context* ctx = document_.fz();
    const char* what = "cannot remove an annotation";
    pdf_obj* annots =
        CallMupdf(ctx, what, [&] { return pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots)); });
    struct Found {
        int at;
        int own_popup;
    };
    const Found found = CallMupdf(ctx, what, [&] {
        const int at = IndexFrom(ctx, annots, id.object, hint);
        if (at < 0)
            return Found{-1, 0};
        pdf_obj* popup = pdf_dict_get(ctx, pdf_array_get(ctx, annots, at), PDF_NAME(Popup));
        return Found{at, pdf_is_indirect(ctx, popup) ? pdf_to_num(ctx, popup) : 0};
    });
    if (found.at < 0)
        return std::nullopt;

    // What goes: the annotation, the popup it names and the popups naming it, wherever each
    // stands. The index says whether there is more than the entry found, so that a crowded
    // page's other entries are read only then.
    AnnotsIndex::Companions companions;
    CallMupdf(ctx, what, [&] { companions = document_.Index().Of(ctx, annots, id.object); });
    RemovedAnnotation removed{id, {}};
    if (companions.popups.empty() && !companions.repeated && found.own_popup == 0) {
        removed.entries.push_back({id.object, found.at});
    } else {
        std::vector<int> goes = std::move(companions.popups);
        goes.push_back(id.object);
        if (found.own_popup > 0)
            goes.push_back(found.own_popup);
        const int count = CallMupdf(ctx, what, [&] { return pdf_array_len(ctx, annots); });
        CallMupdf(ctx, what, [&] {
            for (int i = 0; i < count; ++i) {
                pdf_obj* entry = pdf_array_get(ctx, annots, i);
                if (!pdf_is_indirect(ctx, entry) ||
                    std::find(goes.begin(), goes.end(), pdf_to_num(ctx, entry)) == goes.end()) {
                    continue;
                }
                if (const int number = AnnotationObject(ctx, entry); number > 0)
                    removed.entries.push_back({number, i});
            }
        });
    }
    for (auto it = removed.entries.rbegin(); it != removed.entries.rend(); ++it)
        CallMupdf(ctx, what, [&] { pdf_array_delete(ctx, annots, it->index); });
    std::vector<int> objects;
    for (const RemovedAnnotation::Entry& entry : removed.entries)
        objects.push_back(entry.object);
    CallMupdf(ctx, what, [&] {
        document_.Index().Removed(ctx, annots, objects, static_cast<int>(removed.entries.size()));
    });
    document_.MarkChanged();
    return removed;
}

void Annotations::RemoveAll(int page, const std::vector<int>& objects) {
    const ObjPtr page_obj = PageObject(page);
    fz_context* ctx = document_.fz();
    const std::unordered_set<int> targets(objects.begin(), objects.end());
    const char* what = "cannot remove an annotation";
    pdf_obj* annots =
        CallMupdf(ctx, what, [&] { return pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots)); });
    const int count = CallMupdf(ctx, what, [&] { return pdf_array_len(ctx, annots); });
    // The popups that go with the targets: those the targets name, and those naming a target.
    std::unordered_set<int> popups;
    std::vector<char> goes(static_cast<std::size_t>(count), 0);
    for (int i = 0; i < count; ++i) {
        const int named = CallMupdf(ctx, what, [&] {
            pdf_obj* entry = pdf_array_get(ctx, annots, i);
            const int number = AnnotationObject(ctx, entry);
            if (number == 0 || !targets.contains(number))
                return 0;
            pdf_obj* popup = pdf_dict_get(ctx, entry, PDF_NAME(Popup));
            return pdf_is_indirect(ctx, popup) ? pdf_to_num(ctx, popup) : 0;
        });
        if (named > 0)
            popups.insert(named);
    }
    int kept = 0;
    for (int i = 0; i < count; ++i) {
        const int number = CallMupdf(
            ctx, what, [&] { return AnnotationObject(ctx, pdf_array_get(ctx, annots, i)); });
        bool remove = number > 0 && (targets.contains(number) || popups.contains(number));
        if (!remove && number > 0) {
            remove = CallMupdf(ctx, what, [&] {
                return targets.contains(PopupOwner(ctx, pdf_array_get(ctx, annots, i)));
            });
        }
        goes[static_cast<std::size_t>(i)] = remove ? 1 : 0;
        kept += remove ? 0 : 1;
    }
    if (kept == count)
        return;
    // The kept entries move forward in place and the tail goes from the end, so the walk stays
    // linear however many entries go.
    CallMupdf(ctx, what, [&] {
        int to = 0;
        for (int i = 0; i < count; ++i) {
            if (goes[static_cast<std::size_t>(i)] != 0)
                continue;
            if (to != i)
                pdf_array_put(ctx, annots, to, pdf_array_get(ctx, annots, i));
            ++to;
        }
        for (int i = count - 1; i >= kept; --i)
            pdf_array_delete(ctx, annots, i);
        document_.Index().Forget(ctx, annots);
    });
    document_.MarkChanged();
}

bool Annotations::Discard(const RemovedAnnotation& removed) {
    if (IsOnPage(removed.id))
        return false;
    fz_context* ctx = document_.fz();
    pdf_document* pdf = document_.pdf();
    std::vector<int> objects;
    const auto addStream = [&](pdf_obj* value) {
        if (pdf_is_indirect(ctx, value) && pdf_is_stream(ctx, value))
            objects.push_back(pdf_to_num(ctx, value));
    };
    for (const RemovedAnnotation::Entry& entry : removed.entries) {
        ObjPtr dict = Dictionary(entry.object);
        if (!dict)
            continue;
        objects.push_back(entry.object);
        // /AP: each of /N, /R, /D is a stream or a dictionary of streams by state.
        CallMupdf(ctx, "cannot read an appearance", [&] {
            pdf_obj* ap = pdf_dict_get(ctx, dict.get(), PDF_NAME(AP));
            for (pdf_obj* kind : {PDF_NAME(N), PDF_NAME(R), PDF_NAME(D)}) {
                pdf_obj* value = pdf_dict_get(ctx, ap, kind);
                if (pdf_is_dict(ctx, value) && !pdf_is_stream(ctx, value)) {
                    for (int i = 0; i < pdf_dict_len(ctx, value); ++i)
                        addStream(pdf_dict_get_val(ctx, value, i));
                } else {
                    addStream(value);
                }
            }
        });
    }
    std::sort(objects.begin(), objects.end());
    objects.erase(std::unique(objects.begin(), objects.end()), objects.end());
    for (const int object : objects)
        CallMupdf(ctx, "cannot delete an object", [&] { pdf_delete_object(ctx, pdf, object); });
    return true;
}

bool Annotations::Restore(const RemovedAnnotation& removed) {
    if (IsOnPage(removed.id))
        return false;
    const ObjPtr page_obj = PageObject(removed.id.page);
    fz_context* ctx = document_.fz();
    pdf_document* pdf = document_.pdf();
    const char* what = "cannot put an annotation back";
    CallMupdf(ctx, what, [&] {
        pdf_obj* annots = pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots));
        if (!pdf_is_array(ctx, annots))
            annots = pdf_dict_put_array(ctx, page_obj.get(), PDF_NAME(Annots), 4);
        for (const RemovedAnnotation::Entry& entry : removed.entries) {
            const int at = std::min(entry.index, pdf_array_len(ctx, annots));
            pdf_array_insert_drop(ctx, annots, pdf_new_indirect(ctx, pdf, entry.object, 0), at);
        }
        document_.Index().Forget(ctx, annots);
    });
    document_.MarkChanged();
    return true;
}

void Annotations::Detach(int page) {
    const ObjPtr page_obj = PageObject(page);
    fz_context* ctx = document_.fz();
    const AnnotsIndex& index = document_.Index();
    const bool changed = CallMupdf(ctx, "cannot prepare the annotations", [&] {
        pdf_obj* annots = pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots));
        if (pdf_is_array(ctx, annots) &&
            (!pdf_is_indirect(ctx, annots) || index.IsOwn(pdf_to_num(ctx, annots)))) {
            return false;
        }
        if (pdf_is_array(ctx, annots)) {
            pdf_dict_put_drop(ctx, page_obj.get(), PDF_NAME(Annots),
                              pdf_copy_array(ctx, pdf_resolve_indirect(ctx, annots)));
        } else {
            pdf_dict_put_array(ctx, page_obj.get(), PDF_NAME(Annots), 4);
        }
        return true;
    });
    if (changed)
        document_.MarkChanged();
}

ObjPtr Annotations::Dictionary(int object) const {
    fz_context* ctx = document_.fz();
    pdf_document* pdf = document_.pdf();
    if (object <= 0)
        return ObjPtr(ctx, nullptr);
    return ObjPtr(ctx, CallMupdf(ctx, "cannot read an annotation", [&]() -> pdf_obj* {
                      if (object >= pdf_xref_len(ctx, pdf))
                          return nullptr;
                      pdf_obj* dict = pdf_load_object(ctx, pdf, object);
                      if (pdf_is_dict(ctx, dict))
                          return dict;
                      pdf_drop_obj(ctx, dict);
                      return nullptr;
                  }));
}

std::string Annotations::Subtype(int object) const {
    const ObjPtr dict = Dictionary(object);
    if (!dict)
        return {};
    fz_context* ctx = document_.fz();
    const char* name = CallMupdf(ctx, "cannot read an annotation", [&] {
        return pdf_to_name(ctx, pdf_dict_get(ctx, dict.get(), PDF_NAME(Subtype)));
    });
    return name;
}

Rect Annotations::RectOf(int object) const {
    const ObjPtr dict = Dictionary(object);
    if (!dict)
        return {};
    fz_context* ctx = document_.fz();
    const fz_rect rect = CallMupdf(ctx, "cannot read an annotation", [&] {
        pdf_obj* array = pdf_dict_get(ctx, dict.get(), PDF_NAME(Rect));
        if (pdf_array_len(ctx, array) < 4)
            return fz_make_rect(0, 0, 0, 0);
        return pdf_to_rect(ctx, array);
    });
    return Rect{std::min(rect.x0, rect.x1), std::min(rect.y0, rect.y1), std::max(rect.x0, rect.x1),
                std::max(rect.y0, rect.y1)};
}

}  // namespace pdfhost::engine
