#include "engine/page_objects.h"

#include <new>

#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {
namespace {

// A content processor whose first member is MuPDF's processor, so MuPDF's callbacks can reach
// the recorder. Callbacks run inside MuPDF and must not throw C++ exceptions.
struct ObjectRecorder {
    pdf_processor super;
    std::vector<PageObjectType>* objects;
    bool in_text;
    bool text_shown;
};

ObjectRecorder* Recorder(pdf_processor* proc) {
    return reinterpret_cast<ObjectRecorder*>(proc);
}

void Record(fz_context* ctx, pdf_processor* proc, PageObjectType type) {
    bool stored = true;
    try {
        Recorder(proc)->objects->push_back(type);
    } catch (const std::bad_alloc&) {
        stored = false;
    }
    if (!stored)
        fz_throw(ctx, FZ_ERROR_MEMORY, "out of memory while listing page objects");
}

void OnPaintPath(fz_context* ctx, pdf_processor* proc) {
    Record(ctx, proc, PageObjectType::kPath);
}

void OnBeginText(fz_context*, pdf_processor* proc) {
    Recorder(proc)->in_text = true;
    Recorder(proc)->text_shown = false;
}

void OnEndText(fz_context*, pdf_processor* proc) {
    Recorder(proc)->in_text = false;
}

// A text object counts once, at its first text-showing operator; text shown outside BT/ET
// counts at each operator.
void OnShowText(fz_context* ctx, pdf_processor* proc) {
    ObjectRecorder* recorder = Recorder(proc);
    if (recorder->in_text && recorder->text_shown)
        return;
    recorder->text_shown = true;
    Record(ctx, proc, PageObjectType::kText);
}

void OnTj(fz_context* ctx, pdf_processor* proc, char*, size_t) {
    OnShowText(ctx, proc);
}
void OnTJ(fz_context* ctx, pdf_processor* proc, pdf_obj*) {
    OnShowText(ctx, proc);
}
void OnDquote(fz_context* ctx, pdf_processor* proc, float, float, char*, size_t) {
    OnShowText(ctx, proc);
}

void OnInlineImage(fz_context* ctx, pdf_processor* proc, fz_image*, const char*) {
    Record(ctx, proc, PageObjectType::kImage);
}

void OnImage(fz_context* ctx, pdf_processor* proc, const char*, fz_image*) {
    Record(ctx, proc, PageObjectType::kImage);
}

void OnShading(fz_context* ctx, pdf_processor* proc, const char*, fz_shade*) {
    Record(ctx, proc, PageObjectType::kShading);
}

void OnForm(fz_context* ctx, pdf_processor* proc, const char*, pdf_obj*, pdf_obj*) {
    Record(ctx, proc, PageObjectType::kForm);
}

pdf_processor* NewRecorder(fz_context* ctx, std::vector<PageObjectType>* objects) {
    auto* recorder = static_cast<ObjectRecorder*>(pdf_new_processor(ctx, sizeof(ObjectRecorder)));
    pdf_processor* proc = &recorder->super;
    recorder->objects = objects;
    recorder->in_text = false;
    recorder->text_shown = false;
    proc->usage = "View";
    proc->op_S = proc->op_s = proc->op_F = proc->op_f = proc->op_fstar = OnPaintPath;
    proc->op_B = proc->op_Bstar = proc->op_b = proc->op_bstar = OnPaintPath;
    proc->op_BT = OnBeginText;
    proc->op_ET = OnEndText;
    proc->op_Tj = proc->op_squote = OnTj;
    proc->op_TJ = OnTJ;
    proc->op_dquote = OnDquote;
    proc->op_BI = OnInlineImage;
    proc->op_Do_image = OnImage;
    proc->op_sh = OnShading;
    proc->op_Do_form = OnForm;
    return proc;
}

}  // namespace

std::vector<PageObjectType> ListPageObjects(fz_context* ctx, pdf_document* doc, pdf_obj* page) {
    std::vector<PageObjectType> objects;
    ProcessorPtr recorder(ctx, CallMupdf(ctx, "cannot list page objects",
                                         [&] { return NewRecorder(ctx, &objects); }));
    CallMupdf(ctx, "cannot read the page content", [&] {
        pdf_obj* resources = pdf_dict_get_inheritable(ctx, page, PDF_NAME(Resources));
        pdf_obj* contents = pdf_dict_get(ctx, page, PDF_NAME(Contents));
        pdf_process_contents(ctx, recorder.get(), doc, resources, contents, nullptr);
        pdf_close_processor(ctx, recorder.get());
    });
    return objects;
}

}  // namespace pdfhost::engine
