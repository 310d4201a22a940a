#include "annotation_editor.h"

#include <iostream>

#include "annotation_names.h"
#include "batch_watch.h"
#include "engine/error.h"
#include "engine/hidden_text_scrubber.h"
#include "engine/permissions.h"
#include "engine/redaction.h"
#include "host_app.h"
#include "removed_texts.h"

namespace pdfhost {
namespace {

bool Allows(const HostDocument& document, std::uint32_t bits) {
    return (document.Engine().Permissions() & bits) == bits;
}

bool CanAnnotate(const HostDocument& document) {
    return Allows(document, engine::permission::kAnnotate);
}

// Says on the editor's log, per page, which boxes were not applied as asked and why.
void LogProblems(const HostDocument& document, const engine::RedactionReport& report) {
    for (const engine::RedactionProblem& problem : report.problems) {
        std::cerr << "pdfhost: " << document.FileName() << ", page " << problem.page + 1
                  << ", boxes";
        for (const engine::Rect& box : problem.boxes) {
            std::cerr << " [" << box.left << ' ' << box.bottom << ' ' << box.right << ' ' << box.top
                      << ']';
        }
        std::cerr << ": not applied, the page is unchanged and its Redact annotations stand: "
                  << problem.reason << '\n';
    }
}

}  // namespace

std::uintptr_t AnnotationEditor::TagOf(const HostDocument& document) {
    return reinterpret_cast<std::uintptr_t>(document.Handle());
}

AnnotationRecord* AnnotationEditor::PlacedOf(const HostDocument& document, HostAnnot annot) const {
    AnnotationRecord* record = app_.Annotations().Find(annot);
    if (record == nullptr || record->IsPending() || record->document != document.Handle())
        return nullptr;
    return record;
}

HostAnnot AnnotationEditor::Add(HostDocument& document, int page, const engine::PdfValue& entries,
                                int index) {
    if (!CanAnnotate(document))
        return nullptr;
    try {
        engine::Annotations annotations(document.Engine());
        const engine::AnnotationId id = annotations.Create(page, entries, TagOf(document), index);
        const HostAnnot handle = app_.Annotations().HandleOf(document.Handle(), id);
        Remember(annotations, handle, index);
        Changed(document, page);
        return handle;
    } catch (const engine::Error&) {
        return nullptr;
    }
}

bool AnnotationEditor::Place(HostDocument& document, HostAnnot pending, int page, int index) {
    AnnotationRecord* record = app_.Annotations().Find(pending);
    if (record == nullptr || !record->IsPending() || !CanAnnotate(document))
        return false;
    if (record->document != nullptr && record->document != document.Handle())
        return false;
    try {
        engine::Annotations annotations(document.Engine());
        const engine::AnnotationId id =
            annotations.Create(page, *record->pending, TagOf(document), index);
        app_.Annotations().Place(pending, document.Handle(), id);
        Remember(annotations, pending, index);
        Changed(document, page);
        return true;
    } catch (const engine::Error&) {
        return false;
    }
}

bool AnnotationEditor::Delete(HostDocument& document, HostAnnot annot) {
    AnnotationRecord* record = PlacedOf(document, annot);
    if (record == nullptr || !CanAnnotate(document))
        return false;
    try {
        auto removed = engine::Annotations(document.Engine()).Remove(record->id, record->slot);
        if (!removed.has_value())
            return false;
        record->removal = std::move(removed);
        Changed(document, record->id.page);
        return true;
    } catch (const engine::Error&) {
        return false;
    }
}

bool AnnotationEditor::IsAlive(HostDocument& document, HostAnnot annot) const {
    AnnotationRecord* record = PlacedOf(document, annot);
    if (record == nullptr)
        return false;
    try {
        record->slot = engine::Annotations(document.Engine()).IndexOf(record->id, record->slot);
        return record->slot >= 0;
    } catch (const engine::Error&) {
        return false;
    }
}

void AnnotationEditor::Remember(const engine::Annotations& annotations, HostAnnot annot,
                                int index) {
    AnnotationRecord* record = app_.Annotations().Find(annot);
    if (record == nullptr)
        return;
    try {
        const int last = annotations.Count(record->id.page) - 1;
        const int hint = index < 0 || index > last ? last : index;
        record->slot = annotations.IndexOf(record->id, hint);
    } catch (const engine::Error&) {
        record->slot = -1;  // a hint only: the next check looks everywhere
    }
}

bool AnnotationEditor::UndoLast(HostDocument& document) {
    if (!CanAnnotate(document))
        return false;
    while (const auto entry = app_.Undo().TakeLast(document.Handle())) {
        AnnotationRecord* record = PlacedOf(document, entry->annotation);
        if (record == nullptr)
            continue;
        const bool alive = IsAlive(document, entry->annotation);
        if (entry->change == UndoStack::Change::kAdded && alive)
            return Delete(document, entry->annotation);
        if (entry->change == UndoStack::Change::kDeleted && !alive && record->removal) {
            try {
                if (engine::Annotations(document.Engine()).Restore(*record->removal)) {
                    Changed(document, record->id.page);
                    return true;
                }
            } catch (const engine::Error&) {
                return false;
            }
        }
    }
    return false;
}

void AnnotationEditor::Forget(const UndoStack::Entry& entry) {
    HostDocument* document = app_.Documents().Find(entry.document);
    AnnotationRecord* record =
        document != nullptr ? PlacedOf(*document, entry.annotation) : nullptr;
    if (entry.change != UndoStack::Change::kDeleted || record == nullptr || !record->removal)
        return;
    try {
        if (!engine::Annotations(document->Engine()).Discard(*record->removal))
            return;
    } catch (const engine::Error&) {
        return;  // the objects stay; they go at the next full save
    }
    // Gone for good: its handle is answered as any stale handle from now on.
    if (app_.Undo().Mentions(entry.annotation))
        record->removal.reset();
    else
        app_.Annotations().Forget(entry.annotation);
}

bool AnnotationEditor::ApplyRedactions(HostDocument& document, const std::vector<HostAnnot>* only,
                                       bool fill) {
    if (!Allows(document, engine::permission::kModify | engine::permission::kAnnotate))
        return false;
    engine::Redactor redactor(document.Engine());
    std::vector<engine::AnnotationId> targets;
    engine::RedactionReport report;
    std::vector<std::string> names;
    try {
        if (only == nullptr) {
            targets = redactor.RedactAnnotations();
        } else {
            for (const HostAnnot annot : *only) {
                const AnnotationRecord* record = PlacedOf(document, annot);
                if (record == nullptr)
                    return false;
                targets.push_back(record->id);
            }
            if (targets.empty())
                return false;
        }
        if (targets.empty())
            return true;
        const std::vector<std::u32string> removed = RemovedTextsOf(document, targets);
        if (CurrentBatchWatch() != nullptr)
            names = AnnotationNames(document.Engine(), targets);
        report = redactor.Apply(targets, engine::RedactionOptions{.fillAreas = fill});
        if (report.applied > 0)
            engine::HiddenTextScrubber(document.Engine(), removed).Run();
    } catch (const engine::Error& error) {
        std::cerr << "pdfhost: cannot apply the redactions: " << error.what() << '\n';
        return false;
    }
    LogProblems(document, report);
    if (report.applied == 0)
        return false;
    if (BatchWatch* watch = CurrentBatchWatch())
        watch->RedactionsApplied(document.Path(), names);
    app_.Undo().ForgetDocument(document.Handle());
    app_.MarkModified(document);
    if (DocView* view = document.View())
        view->InvalidatePage(view->CurrentPage());
    return report.problems.empty();
}

void AnnotationEditor::Touch(HostDocument& document, int page) {
    try {
        engine::Annotations(document.Engine()).Detach(page);
    } catch (const engine::Error&) {
        // A page out of range has nothing to prepare.
    }
}

void AnnotationEditor::Redraw(HostDocument& document, HostAnnot annot) {
    const AnnotationRecord* record = PlacedOf(document, annot);
    DocView* view = document.View();
    if (record == nullptr || view == nullptr || record->id.page != view->CurrentPage())
        return;
    try {
        const engine::Rect r = engine::Annotations(document.Engine()).RectOf(record->id.object);
        const DevicePoint a = view->PageToDevice(record->id.page, r.left, r.bottom);
        const DevicePoint b = view->PageToDevice(record->id.page, r.right, r.top);
        view->Invalidate(DeviceRect{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x),
                                    std::max(a.y, b.y)});
    } catch (const engine::Error&) {
    }
}

void AnnotationEditor::Changed(HostDocument& document, int page) {
    app_.MarkModified(document);
    if (DocView* view = document.View())
        view->InvalidatePage(page);
}

}  // namespace pdfhost
