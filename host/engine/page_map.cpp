#include "engine/page_map.h"

#include <utility>

#include "engine/error.h"
#include "engine/mupdf_call.h"

namespace pdfhost::engine {
namespace {

// Drops `count` references to `object` that MuPDF took and none of its callers drops.
void DropTaken(fz_context* ctx, pdf_obj* object, int count) noexcept {
    for (int i = 0; i < count; ++i)
        pdf_drop_obj(ctx, object);
}

// Whether loading the page makes MuPDF look up other pages: a link or an action names the page
// it goes to, and MuPDF reads that page's size. Reads the page's own annotation array only.
bool NamesOtherPages(fz_context* ctx, pdf_obj* page) {
    pdf_obj* annots = pdf_dict_get(ctx, page, PDF_NAME(Annots));
    const int count = pdf_array_len(ctx, annots);
    for (int i = 0; i < count; ++i) {
        pdf_obj* annot = pdf_array_get(ctx, annots, i);
        if (pdf_name_eq(ctx, pdf_dict_get(ctx, annot, PDF_NAME(Subtype)), PDF_NAME(Link)) ||
            pdf_dict_get(ctx, annot, PDF_NAME(Dest)) != nullptr ||
            pdf_dict_get(ctx, annot, PDF_NAME(A)) != nullptr) {
            return true;
        }
    }
    return false;
}

// Takes MuPDF's forward map away for its lifetime, so that MuPDF's lookups walk the page tree
// and hand out borrowed references; the reverse map, which allocates nothing, stays.
class ForwardMapHidden {
  public:
    explicit ForwardMapHidden(pdf_document* doc)
        : doc_(doc), map_(std::exchange(doc->fwd_page_map, nullptr)) {}
    ForwardMapHidden(const ForwardMapHidden&) = delete;
    ForwardMapHidden& operator=(const ForwardMapHidden&) = delete;
    ~ForwardMapHidden() { doc_->fwd_page_map = map_; }

  private:
    pdf_document* doc_;
    int* map_;
};

}  // namespace

PageMap::PageMap(PageMap&& other) noexcept
    : ctx_(other.ctx_),
      doc_(std::exchange(other.doc_, nullptr)),
      lookupsKeep_(other.lookupsKeep_) {}

PageMap& PageMap::operator=(PageMap&& other) noexcept {
    if (this != &other) {
        Drop();
        ctx_ = other.ctx_;
        doc_ = std::exchange(other.doc_, nullptr);
        lookupsKeep_ = other.lookupsKeep_;
    }
    return *this;
}

PageMap::~PageMap() {
    Drop();
}

void PageMap::Load(fz_context* ctx, pdf_document* doc) noexcept {
    Drop();
    try {
        if (CallMupdf(ctx, "", [&] { return pdf_count_pages(ctx, doc); }) <= 0)
            return;
        CallMupdf(ctx, "", [&] { pdf_load_page_tree(ctx, doc); });
    } catch (const Error&) {
        return;  // A page tree MuPDF cannot index is walked per lookup.
    }
    ctx_ = ctx;
    doc_ = doc;
    // Two lookups of the first page: if the second leaves one more reference than the first,
    // every lookup keeps one.
    struct Probe {
        pdf_obj* first;
        int firstRefs;
        pdf_obj* second;
        int secondRefs;
    };
    try {
        const Probe probe = CallMupdf(ctx, "", [&] {
            Probe p{};
            p.first = pdf_lookup_page_obj(ctx, doc, 0);
            p.firstRefs = pdf_obj_refs(ctx, p.first);
            p.second = pdf_lookup_page_obj(ctx, doc, 0);
            p.secondRefs = pdf_obj_refs(ctx, p.second);
            return p;
        });
        lookupsKeep_ = probe.first == probe.second && probe.secondRefs > probe.firstRefs;
        if (lookupsKeep_) {
            DropTaken(ctx, probe.first, 1);
            DropTaken(ctx, probe.second, 1);
        }
    } catch (const Error&) {
        Drop();  // A first page MuPDF cannot find: lookups walk the tree and report it.
    }
}

void PageMap::Drop() noexcept {
    if (doc_ == nullptr)
        return;
    pdf_document* doc = std::exchange(doc_, nullptr);
    try {
        CallMupdf(ctx_, "", [&] { pdf_drop_page_tree(ctx_, doc); });
    } catch (const Error&) {
        // Dropping the map only frees memory; nothing is left to undo.
    }
}

ObjPtr PageMap::LookUp(fz_context* ctx, pdf_document* doc, int page, std::string_view what) const {
    const bool keeps = Loaded() && lookupsKeep_;
    return ObjPtr(ctx, CallMupdf(ctx, what, [&] {
                      pdf_obj* found = pdf_lookup_page_obj(ctx, doc, page);
                      return keeps ? found : pdf_keep_obj(ctx, found);
                  }));
}

PagePtr PageMap::LoadPage(fz_context* ctx, pdf_document* doc, int page,
                          std::string_view what) const {
    const auto load = [&] {
        return PagePtr(ctx, CallMupdf(ctx, what, [&] { return pdf_load_page(ctx, doc, page); }));
    };
    if (!Loaded() || !lookupsKeep_)
        return load();
    const ObjPtr self = LookUp(ctx, doc, page, what);
    if (CallMupdf(ctx, what, [&] { return NamesOtherPages(ctx, self.get()); })) {
        const ForwardMapHidden hidden(doc);
        return load();
    }
    // Loading a page that is not open looks it up once more and keeps what it found as the
    // page's own reference; the lookup's reference is the one nobody drops.
    const int before = pdf_obj_refs(ctx, self.get());
    PagePtr loaded;
    try {
        loaded = load();
    } catch (const Error&) {
        DropTaken(ctx, self.get(), pdf_obj_refs(ctx, self.get()) - before);
        throw;
    }
    const int pageOwn = loaded.get()->super.refs > 1 ? 0 : 1;
    DropTaken(ctx, self.get(), pdf_obj_refs(ctx, self.get()) - before - pageOwn);
    return loaded;
}

}  // namespace pdfhost::engine
