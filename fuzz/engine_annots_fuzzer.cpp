// Runs of the engine's annotation changes on a blank two-page document, steered by the input:
// annotations and popups made, taken off one at a time (from a right, wrong or no remembered
// place) or together, put back, pages given arrays of their own, and changes made past the
// engine as they come about (entries deleted or numbers appended in place; another array with an
// entry standing twice, a popup or an entry that is no dictionary; the array shared by both
// pages). After each step the page's /Annots is compared with what a plain reading of it before
// the step says must be there: Remove takes exactly the annotation, the popup it names and the
// popups naming it, wherever each stands, whatever the engine remembers of the page. A
// difference is a finding.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <set>
#include <vector>

#include "engine/annotations.h"
#include "engine/annots_index.h"
#include "engine/context.h"
#include "engine/document.h"
#include "engine/mupdf_call.h"
#include "engine/page_object_number.h"
#include "engine/pdf_value.h"

namespace {

using namespace pdfhost::engine;

constexpr std::uintptr_t kTag = 1;
constexpr int kPages = 2;
constexpr int kMaxSteps = 96;

[[noreturn]] void Finding(const char* what) {
    std::fprintf(stderr, "engine_annots_fuzzer: %s\n", what);
    std::abort();
}

// What a plain reading of one /Annots entry says.
struct Entry {
    int number = 0;  // the object an indirect entry refers to, else 0
    int object = 0;  // the number when it resolves to a dictionary, else 0
    int owner = 0;   // for a popup: the annotation it belongs to
    int popup = 0;   // the popup its dictionary names
    bool operator==(const Entry& other) const { return number == other.number; }
};

class Run {
  public:
    explicit Run(Context& context) : document_(Document::CreateBlank(context)) {
        fz_context* ctx = document_.fz();
        pdf_document* pdf = document_.pdf();
        CallMupdf(ctx, "cannot add a page", [&] {
            const fz_rect box = {0, 0, 612, 792};
            fz_buffer* contents = fz_new_buffer(ctx, 1);
            pdf_obj* page = pdf_add_page(ctx, pdf, box, 0, nullptr, contents);
            pdf_insert_page(ctx, pdf, -1, page);
            pdf_drop_obj(ctx, page);
            fz_drop_buffer(ctx, contents);
        });
        document_.IndexPages();
    }

    void Step(FuzzedDataProvider& in) {
        const int page = in.ConsumeIntegralInRange<int>(0, kPages - 1);
        switch (in.ConsumeIntegralInRange<int>(0, 11)) {
            case 0:
            case 1:
            case 2:
                Create(page, in.ConsumeBool() ? "Redact" : "Text", 0,
                       in.ConsumeIntegralInRange<int>(-1, 40));
                break;
            case 3:
                if (const int owner = Pick(in))
                    Create(page, "Popup", owner, in.ConsumeIntegralInRange<int>(-1, 40));
                break;
            case 4:
            case 5:
                Remove(page, Pick(in), in.ConsumeIntegralInRange<int>(-2, 60));
                break;
            case 6:
                RemoveAll(page, in);
                break;
            case 7:
                Restore(in);
                break;
            case 8:
                Annotations(document_).Detach(page);
                break;
            case 9:
                IndexOf(page, Pick(in), in.ConsumeIntegralInRange<int>(-2, 60));
                break;
            default:
                PastTheEngine(page, in);
                break;
        }
    }

  private:
    int Pick(FuzzedDataProvider& in) {
        if (made_.empty())
            return 0;
        return made_[in.ConsumeIntegralInRange<std::size_t>(0, made_.size() - 1)];
    }

    std::vector<Entry> Read(int page) {
        fz_context* ctx = document_.fz();
        const ObjPtr page_obj = document_.PageObject(page, "cannot read a page");
        pdf_obj* annots = CallMupdf(ctx, "cannot read /Annots", [&] {
            return pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots));
        });
        const int count =
            CallMupdf(ctx, "cannot read /Annots", [&] { return pdf_array_len(ctx, annots); });
        std::vector<Entry> entries;
        for (int i = 0; i < count; ++i) {
            entries.push_back(CallMupdf(ctx, "cannot read /Annots", [&] {
                pdf_obj* item = pdf_array_get(ctx, annots, i);
                Entry entry;
                if (pdf_is_indirect(ctx, item)) {
                    entry.number = pdf_to_num(ctx, item);
                    if (pdf_is_dict(ctx, item)) {
                        entry.object = entry.number;
                        entry.owner = PopupOwner(ctx, item);
                        pdf_obj* popup = pdf_dict_get(ctx, item, PDF_NAME(Popup));
                        entry.popup = pdf_is_indirect(ctx, popup) ? pdf_to_num(ctx, popup) : 0;
                    }
                }
                return entry;
            }));
        }
        return entries;
    }

    static void Expect(const std::vector<Entry>& actual, const std::vector<Entry>& expected,
                       const char* what) {
        if (actual != expected)
            Finding(what);
    }

    PdfValue Numbers(std::initializer_list<float> values) {
        PdfValue array = PdfValue::Array();
        for (const float value : values)
            array.Push(PdfValue::Real(value));
        return array;
    }

    void Create(int page, const char* subtype, int owner, int index) {
        const std::vector<Entry> before = Read(page);
        PdfValue dict = PdfValue::Dictionary();
        dict.Set("Type", PdfValue::Name("Annot"));
        dict.Set("Subtype", PdfValue::Name(subtype));
        dict.Set("Rect", Numbers({10, 10, 60, 30}));
        if (owner > 0)
            dict.Set("Parent", PdfValue::Reference(owner, kTag));
        dict.Set("P", PdfValue::Reference(PageObjectNumber(document_, page), kTag));
        const AnnotationId id = Annotations(document_).Create(page, dict, kTag, index);
        made_.push_back(id.object);
        std::vector<Entry> expected = before;
        const auto at = index >= 0 && index < static_cast<int>(before.size())
                            ? expected.begin() + index
                            : expected.end();
        expected.insert(at, Entry{id.object});
        Expect(Read(page), expected, "Create put the annotation elsewhere");
    }

    void Remove(int page, int object, int hint) {
        if (object == 0)
            return;
        const std::vector<Entry> before = Read(page);
        std::set<int> goes = {object};
        bool present = false;
        for (const Entry& entry : before) {
            if (entry.object == object) {
                present = true;
                if (entry.popup > 0)
                    goes.insert(entry.popup);
            }
        }
        for (const Entry& entry : before) {
            if (entry.owner == object)
                goes.insert(entry.number);
        }
        std::vector<Entry> expected;
        std::vector<RemovedAnnotation::Entry> taken;
        for (std::size_t i = 0; i < before.size(); ++i) {
            if (present && before[i].object > 0 && goes.contains(before[i].object))
                taken.push_back({before[i].object, static_cast<int>(i)});
            else
                expected.push_back(before[i]);
        }
        const std::optional<RemovedAnnotation> removed =
            Annotations(document_).Remove(AnnotationId{page, object}, hint);
        Expect(Read(page), expected, "Remove left a companion behind or took another entry");
        if (removed.has_value() != present)
            Finding(
                "Remove answered for an annotation that was not there, or not for one that was");
        if (!removed)
            return;
        if (removed->entries.size() != taken.size() ||
            !std::equal(taken.begin(), taken.end(), removed->entries.begin(),
                        [](const auto& a, const auto& b) {
                            return a.object == b.object && a.index == b.index;
                        })) {
            Finding("Remove reported other entries than it took");
        }
        removed_.push_back(*removed);
    }

    void RemoveAll(int page, FuzzedDataProvider& in) {
        std::vector<int> targets;
        for (int n = in.ConsumeIntegralInRange<int>(0, 4); n > 0; --n) {
            if (const int object = Pick(in))
                targets.push_back(object);
        }
        const std::vector<Entry> before = Read(page);
        const std::set<int> target_set(targets.begin(), targets.end());
        std::set<int> popups;
        for (const Entry& entry : before) {
            if (entry.object > 0 && target_set.contains(entry.object) && entry.popup > 0)
                popups.insert(entry.popup);
        }
        std::vector<Entry> expected;
        for (const Entry& entry : before) {
            const bool goes = entry.object > 0 &&
                              (target_set.contains(entry.object) || popups.contains(entry.object) ||
                               target_set.contains(entry.owner));
            if (!goes)
                expected.push_back(entry);
        }
        Annotations(document_).RemoveAll(page, targets);
        Expect(Read(page), expected, "RemoveAll took other entries");
    }

    void Restore(FuzzedDataProvider& in) {
        if (removed_.empty())
            return;
        const std::size_t which = in.ConsumeIntegralInRange<std::size_t>(0, removed_.size() - 1);
        const RemovedAnnotation removed = removed_[which];
        removed_.erase(removed_.begin() + static_cast<std::ptrdiff_t>(which));
        const int page = removed.id.page;
        std::vector<Entry> expected = Read(page);
        const bool there = std::any_of(expected.begin(), expected.end(), [&](const Entry& e) {
            return e.object == removed.id.object;
        });
        if (!there) {
            for (const RemovedAnnotation::Entry& entry : removed.entries) {
                const std::size_t at =
                    std::min(static_cast<std::size_t>(entry.index), expected.size());
                expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(at),
                                Entry{entry.object});
            }
        }
        if (Annotations(document_).Restore(removed) == there)
            Finding("Restore answered wrongly whether it put the annotation back");
        Expect(Read(page), expected, "Restore put the entries elsewhere");
    }

    void IndexOf(int page, int object, int hint) {
        if (object == 0)
            return;
        const std::vector<Entry> entries = Read(page);
        const int at = Annotations(document_).IndexOf(AnnotationId{page, object}, hint);
        const bool present = std::any_of(entries.begin(), entries.end(),
                                         [&](const Entry& e) { return e.object == object; });
        if (present != (at >= 0))
            Finding("IndexOf missed the annotation or found an absent one");
        if (at >= 0 && (at >= static_cast<int>(entries.size()) || entries[at].object != object))
            Finding("IndexOf answered a place that holds another entry");
        if (hint >= 0 && hint < static_cast<int>(entries.size()) &&
            entries[hint].object == object && at != hint) {
            Finding("IndexOf passed over the remembered place");
        }
    }

    // Changes to a page's /Annots that the engine does not make, and so is not told of, as they
    // come about: in place the host only deletes entries or appends numbers; references come in
    // with another array (a file's, or one set in the page's place).
    void PastTheEngine(int page, FuzzedDataProvider& in) {
        fz_context* ctx = document_.fz();
        pdf_document* pdf = document_.pdf();
        const ObjPtr page_obj = document_.PageObject(page, "cannot read a page");
        const int kind = in.ConsumeIntegralInRange<int>(0, 6);
        const int position = in.ConsumeIntegralInRange<int>(0, 60);
        const int other = Pick(in);
        CallMupdf(ctx, "cannot change /Annots", [&] {
            pdf_obj* annots = pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots));
            if (!pdf_is_array(ctx, annots))
                annots = pdf_dict_put_array(ctx, page_obj.get(), PDF_NAME(Annots), 4);
            const int length = pdf_array_len(ctx, annots);
            const int at = std::min(position, length);
            const auto another = [&] {
                pdf_obj* copy = pdf_copy_array(ctx, annots);
                pdf_dict_put_drop(ctx, page_obj.get(), PDF_NAME(Annots),
                                  pdf_add_object_drop(ctx, pdf, copy));
                return pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots));
            };
            switch (kind) {
                case 0:  // an object standing twice
                    if (other > 0)
                        pdf_array_insert_drop(ctx, another(), pdf_new_indirect(ctx, pdf, other, 0),
                                              at);
                    break;
                case 1: {  // a popup of another annotation
                    if (other == 0)
                        break;
                    pdf_obj* popup = pdf_add_new_dict(ctx, pdf, 4);
                    pdf_dict_put(ctx, popup, PDF_NAME(Type), PDF_NAME(Annot));
                    pdf_dict_put(ctx, popup, PDF_NAME(Subtype), PDF_NAME(Popup));
                    pdf_dict_put_drop(ctx, popup, PDF_NAME(Parent),
                                      pdf_new_indirect(ctx, pdf, other, 0));
                    pdf_array_insert(ctx, another(), popup, at);
                    made_.push_back(pdf_to_num(ctx, popup));
                    pdf_drop_obj(ctx, popup);
                    break;
                }
                case 2:  // an entry deleted
                    if (at < length)
                        pdf_array_delete(ctx, annots, at);
                    break;
                case 3:  // a new array object with the same entries
                    another();
                    break;
                case 4: {  // the other page's array shared by this one
                    const ObjPtr source = document_.PageObject(1 - page, "cannot read a page");
                    pdf_obj* theirs = pdf_dict_get(ctx, source.get(), PDF_NAME(Annots));
                    if (!pdf_is_array(ctx, theirs))
                        break;
                    if (!pdf_is_indirect(ctx, theirs)) {
                        pdf_obj* ref = pdf_add_object(ctx, pdf, theirs);
                        pdf_dict_put_drop(ctx, source.get(), PDF_NAME(Annots), ref);
                        theirs = pdf_dict_get(ctx, source.get(), PDF_NAME(Annots));
                    }
                    pdf_dict_put(ctx, page_obj.get(), PDF_NAME(Annots), theirs);
                    break;
                }
                case 5:  // a number appended
                    pdf_array_push_int(ctx, annots, 7);
                    break;
                default:  // an entry that is no dictionary
                    pdf_array_insert_drop(ctx, another(),
                                          pdf_add_object_drop(ctx, pdf, pdf_new_int(ctx, 7)), at);
                    break;
            }
        });
    }

    Document document_;
    std::vector<int> made_;
    std::vector<RemovedAnnotation> removed_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static Context* context = new Context();
    FuzzedDataProvider in(data, size);
    Run run(*context);
    for (int step = 0; step < kMaxSteps && in.remaining_bytes() > 0; ++step)
        run.Step(in);
    context->TakeWarnings();
    return 0;
}
