#include "engine/popup_index.h"

namespace pdfhost::engine {

int PopupOwner(fz_context* ctx, pdf_obj* entry) {
    if (!pdf_is_indirect(ctx, entry) || !pdf_is_dict(ctx, entry) ||
        pdf_dict_get(ctx, entry, PDF_NAME(Subtype)) != PDF_NAME(Popup)) {
        return 0;
    }
    pdf_obj* parent = pdf_dict_get(ctx, entry, PDF_NAME(Parent));
    if (parent == nullptr)
        parent = pdf_dict_get(ctx, entry, PDF_NAME(P));
    return pdf_is_indirect(ctx, parent) ? pdf_to_num(ctx, parent) : 0;
}

void PopupIndex::Page::Add(int popup, int owner) {
    byParent[owner].push_back(popup);
    ownerOf[popup] = owner;
}

void PopupIndex::Page::Drop(int object) {
    if (const auto owner = ownerOf.find(object); owner != ownerOf.end()) {
        const auto popups = byParent.find(owner->second);
        if (popups != byParent.end()) {
            std::erase(popups->second, object);
            if (popups->second.empty())
                byParent.erase(popups);
        }
        ownerOf.erase(owner);
    }
    if (const auto popups = byParent.find(object); popups != byParent.end()) {
        for (const int popup : popups->second)
            ownerOf.erase(popup);
        byParent.erase(popups);
    }
}

PopupIndex::Page* PopupIndex::Valid(fz_context* ctx, int page, pdf_obj* annots, int length) {
    const auto it = pages_.find(page);
    if (it == pages_.end())
        return nullptr;
    if (it->second.annots.get() != pdf_resolve_indirect(ctx, annots) ||
        it->second.length != length) {
        pages_.erase(it);
        return nullptr;
    }
    return &it->second;
}

std::vector<int> PopupIndex::Of(fz_context* ctx, int page, pdf_obj* annots, int parent) {
    const int count = pdf_array_len(ctx, annots);
    Page* part = Valid(ctx, page, annots, count);
    if (part == nullptr) {
        // Read in place with no valid length until the end: a MuPDF error on the way leaves a
        // part that is read again next time.
        part = &pages_[page];
        part->annots = ObjPtr(ctx, pdf_keep_obj(ctx, pdf_resolve_indirect(ctx, annots)));
        part->length = -1;
        for (int i = 0; i < count; ++i) {
            pdf_obj* entry = pdf_array_get(ctx, annots, i);
            if (const int owner = PopupOwner(ctx, entry); owner > 0)
                part->Add(pdf_to_num(ctx, entry), owner);
        }
        part->length = count;
    }
    const auto it = part->byParent.find(parent);
    return it == part->byParent.end() ? std::vector<int>{} : it->second;
}

void PopupIndex::Added(fz_context* ctx, int page, pdf_obj* annots, pdf_obj* entry) {
    const int count = pdf_array_len(ctx, annots);
    Page* part = Valid(ctx, page, annots, count - 1);
    if (part == nullptr)
        return;
    part->length = count;
    if (const int owner = PopupOwner(ctx, entry); owner > 0)
        part->Add(pdf_to_num(ctx, entry), owner);
}

void PopupIndex::Removed(fz_context* ctx, int page, pdf_obj* annots,
                         const std::vector<int>& objects, int count) {
    const int length = pdf_array_len(ctx, annots);
    Page* part = Valid(ctx, page, annots, length + count);
    if (part == nullptr)
        return;
    part->length = length;
    for (const int object : objects)
        part->Drop(object);
}

}  // namespace pdfhost::engine
