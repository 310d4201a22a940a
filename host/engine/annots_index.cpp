#include "engine/annots_index.h"

#include <algorithm>

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

void AnnotsIndex::Part::Add(int popup, int owner) {
    byParent[owner].push_back(popup);
    ownerOf[popup] = owner;
}

void AnnotsIndex::Part::Drop(int object) {
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
    if (const auto at = std::lower_bound(repeated.begin(), repeated.end(), object);
        at != repeated.end() && *at == object) {
        repeated.erase(at);
    }
}

AnnotsIndex::Part* AnnotsIndex::Valid(fz_context* ctx, pdf_obj* annots, int length) {
    const auto it = parts_.find(pdf_resolve_indirect(ctx, annots));
    if (it == parts_.end())
        return nullptr;
    if (it->second.length != length) {
        parts_.erase(it);
        return nullptr;
    }
    return &it->second;
}

AnnotsIndex::Part& AnnotsIndex::Read(fz_context* ctx, pdf_obj* annots, int length) {
    pdf_obj* array = pdf_resolve_indirect(ctx, annots);
    if (parts_.size() >= kParts && !parts_.contains(array))
        parts_.clear();
    // Read in place with no valid length until the end: a MuPDF error on the way leaves a part
    // that is read again next time.
    Part& part = parts_[array];
    part = Part{};
    part.annots = ObjPtr(ctx, pdf_keep_obj(ctx, array));
    part.length = -1;
    numbers_.clear();
    for (int i = 0; i < length; ++i) {
        pdf_obj* entry = pdf_array_get(ctx, array, i);
        if (!pdf_is_indirect(ctx, entry))
            continue;
        numbers_.push_back(pdf_to_num(ctx, entry));
        if (const int owner = PopupOwner(ctx, entry); owner > 0)
            part.Add(numbers_.back(), owner);
    }
    std::sort(numbers_.begin(), numbers_.end());
    for (auto at = std::adjacent_find(numbers_.begin(), numbers_.end()); at != numbers_.end();
         at = std::adjacent_find(std::upper_bound(at, numbers_.end(), *at), numbers_.end())) {
        part.repeated.push_back(*at);
    }
    numbers_.clear();
    part.length = length;
    return part;
}

AnnotsIndex::Companions AnnotsIndex::Of(fz_context* ctx, pdf_obj* annots, int object) {
    const int length = pdf_array_len(ctx, annots);
    Part* part = Valid(ctx, annots, length);
    if (part == nullptr)
        part = &Read(ctx, annots, length);
    Companions companions;
    if (const auto it = part->byParent.find(object); it != part->byParent.end())
        companions.popups = it->second;
    companions.repeated = std::binary_search(part->repeated.begin(), part->repeated.end(), object);
    return companions;
}

void AnnotsIndex::Added(fz_context* ctx, pdf_obj* annots, pdf_obj* entry) {
    const int length = pdf_array_len(ctx, annots);
    Part* part = Valid(ctx, annots, length - 1);
    if (part == nullptr)
        return;
    part->length = length;
    if (const int owner = PopupOwner(ctx, entry); owner > 0)
        part->Add(pdf_to_num(ctx, entry), owner);
}

void AnnotsIndex::Removed(fz_context* ctx, pdf_obj* annots, const std::vector<int>& objects,
                          int count) {
    const int length = pdf_array_len(ctx, annots);
    Part* part = Valid(ctx, annots, length + count);
    if (part == nullptr)
        return;
    part->length = length;
    for (const int object : objects)
        part->Drop(object);
}

}  // namespace pdfhost::engine
