#include "undo_stack.h"

#include <algorithm>

namespace pdfhost {

void UndoStack::Record(HostDoc document, HostAnnot annotation, Change change) {
    if (document == nullptr || annotation == nullptr)
        return;
    entries_.push_back(Entry{document, annotation, change});
    if (entries_.size() > kMaxEntries) {
        const Entry evicted = entries_.front();
        entries_.pop_front();
        if (onEvicted_)
            onEvicted_(evicted);
    }
}

bool UndoStack::Mentions(HostAnnot annotation) const {
    return std::any_of(entries_.begin(), entries_.end(),
                       [&](const Entry& entry) { return entry.annotation == annotation; });
}

std::optional<UndoStack::Entry> UndoStack::TakeLast(HostDoc document) {
    const auto it = std::find_if(entries_.rbegin(), entries_.rend(),
                                 [&](const Entry& entry) { return entry.document == document; });
    if (it == entries_.rend())
        return std::nullopt;
    const Entry entry = *it;
    entries_.erase(std::next(it).base());
    return entry;
}

std::size_t UndoStack::Count(HostDoc document) const {
    return static_cast<std::size_t>(std::count_if(
        entries_.begin(), entries_.end(), [&](const Entry& e) { return e.document == document; }));
}

void UndoStack::ForgetDocument(HostDoc document) {
    std::erase_if(entries_, [&](const Entry& entry) { return entry.document == document; });
}

}  // namespace pdfhost
