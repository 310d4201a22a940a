#include "engine/covered_path_filter.h"

#include <algorithm>
#include <new>
#include <vector>

#include "engine/forwarding_processor.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {

// One path construction operator (or a clip marker) held back until the path is painted.
struct PathOperator {
    enum class Kind { kMove, kLine, kCurve, kCurveV, kCurveY, kClose, kRect, kClip, kClipEvenOdd };
    Kind kind;
    float v[6];
};

struct PathFilterState {
    pdf_processor* processor = nullptr;
    pdf_processor* next = nullptr;
    const RedactionAreas* areas = nullptr;
    fz_matrix ctm = fz_identity;
    std::vector<fz_matrix> saved;
    std::vector<PathOperator> path;
    fz_rect bounds = fz_empty_rect;
    bool clipping = false;
    int removed = 0;
};

namespace {

// The processor MuPDF calls; it starts with the forwarding head, so callbacks find the state.
struct FilterProcessor {
    ForwardingProcessor head;
    PathFilterState* state;
};

PathFilterState& StateOf(pdf_processor* proc) {
    return *reinterpret_cast<FilterProcessor*>(proc)->state;
}

// Runs a C++ step that may allocate inside a MuPDF callback: an allocation failure becomes a
// MuPDF error, since no C++ exception may cross MuPDF's frames.
template <typename Step>
void Safely(fz_context* ctx, Step step) {
    bool failed = false;
    try {
        step();
    } catch (const std::bad_alloc&) {
        failed = true;
    }
    if (failed)
        fz_throw(ctx, FZ_ERROR_MEMORY, "out of memory while filtering paths");
}

void Extend(PathFilterState& state, float x, float y) {
    state.bounds = fz_include_point_in_rect(state.bounds, fz_transform_point_xy(x, y, state.ctm));
}

void Hold(fz_context* ctx, PathFilterState& state, PathOperator op) {
    Safely(ctx, [&] { state.path.push_back(op); });
}

void Replay(fz_context* ctx, pdf_processor* next, const PathOperator& op) {
    const float* v = op.v;
    switch (op.kind) {
        case PathOperator::Kind::kMove:
            if (next->op_m)
                next->op_m(ctx, next, v[0], v[1]);
            break;
        case PathOperator::Kind::kLine:
            if (next->op_l)
                next->op_l(ctx, next, v[0], v[1]);
            break;
        case PathOperator::Kind::kCurve:
            if (next->op_c)
                next->op_c(ctx, next, v[0], v[1], v[2], v[3], v[4], v[5]);
            break;
        case PathOperator::Kind::kCurveV:
            if (next->op_v)
                next->op_v(ctx, next, v[0], v[1], v[2], v[3]);
            break;
        case PathOperator::Kind::kCurveY:
            if (next->op_y)
                next->op_y(ctx, next, v[0], v[1], v[2], v[3]);
            break;
        case PathOperator::Kind::kClose:
            if (next->op_h)
                next->op_h(ctx, next);
            break;
        case PathOperator::Kind::kRect:
            if (next->op_re)
                next->op_re(ctx, next, v[0], v[1], v[2], v[3]);
            break;
        case PathOperator::Kind::kClip:
            if (next->op_W)
                next->op_W(ctx, next);
            break;
        case PathOperator::Kind::kClipEvenOdd:
            if (next->op_Wstar)
                next->op_Wstar(ctx, next);
            break;
    }
}

void ResetPath(PathFilterState& state) {
    state.path.clear();
    state.bounds = fz_empty_rect;
    state.clipping = false;
}

// Passes a held path on unchanged.
void Flush(fz_context* ctx, PathFilterState& state) {
    for (const PathOperator& op : state.path)
        Replay(ctx, state.next, op);
    ResetPath(state);
}

// A painting operator: the held path goes with it when it paints inside an area.
template <void (*pdf_processor::*Member)(fz_context*, pdf_processor*)>
void Paint(fz_context* ctx, pdf_processor* proc) {
    PathFilterState& state = StateOf(proc);
    const bool drop = !state.clipping && !state.path.empty() && !fz_is_empty_rect(state.bounds) &&
                      state.areas->Contains(
                          Rect{state.bounds.x0, state.bounds.y0, state.bounds.x1, state.bounds.y1});
    if (drop) {
        ++state.removed;
        ResetPath(state);
        return;
    }
    Flush(ctx, state);
    if (state.next->*Member)
        (state.next->*Member)(ctx, state.next);
}

void EndPathWithoutPainting(fz_context* ctx, pdf_processor* proc) {
    PathFilterState& state = StateOf(proc);
    Flush(ctx, state);
    if (state.next->op_n)
        state.next->op_n(ctx, state.next);
}

void MoveTo(fz_context* ctx, pdf_processor* proc, float x, float y) {
    PathFilterState& state = StateOf(proc);
    Extend(state, x, y);
    Hold(ctx, state, {PathOperator::Kind::kMove, {x, y}});
}

void LineTo(fz_context* ctx, pdf_processor* proc, float x, float y) {
    PathFilterState& state = StateOf(proc);
    Extend(state, x, y);
    Hold(ctx, state, {PathOperator::Kind::kLine, {x, y}});
}

void CurveTo(fz_context* ctx, pdf_processor* proc, float x1, float y1, float x2, float y2, float x3,
             float y3) {
    PathFilterState& state = StateOf(proc);
    Extend(state, x1, y1);
    Extend(state, x2, y2);
    Extend(state, x3, y3);
    Hold(ctx, state, {PathOperator::Kind::kCurve, {x1, y1, x2, y2, x3, y3}});
}

void CurveToV(fz_context* ctx, pdf_processor* proc, float x2, float y2, float x3, float y3) {
    PathFilterState& state = StateOf(proc);
    Extend(state, x2, y2);
    Extend(state, x3, y3);
    Hold(ctx, state, {PathOperator::Kind::kCurveV, {x2, y2, x3, y3}});
}

void CurveToY(fz_context* ctx, pdf_processor* proc, float x1, float y1, float x3, float y3) {
    PathFilterState& state = StateOf(proc);
    Extend(state, x1, y1);
    Extend(state, x3, y3);
    Hold(ctx, state, {PathOperator::Kind::kCurveY, {x1, y1, x3, y3}});
}

void ClosePath(fz_context* ctx, pdf_processor* proc) {
    Hold(ctx, StateOf(proc), {PathOperator::Kind::kClose, {}});
}

void Rectangle(fz_context* ctx, pdf_processor* proc, float x, float y, float w, float h) {
    PathFilterState& state = StateOf(proc);
    Extend(state, x, y);
    Extend(state, x + w, y);
    Extend(state, x, y + h);
    Extend(state, x + w, y + h);
    Hold(ctx, state, {PathOperator::Kind::kRect, {x, y, w, h}});
}

void Clip(fz_context* ctx, pdf_processor* proc) {
    PathFilterState& state = StateOf(proc);
    state.clipping = true;
    Hold(ctx, state, {PathOperator::Kind::kClip, {}});
}

void ClipEvenOdd(fz_context* ctx, pdf_processor* proc) {
    PathFilterState& state = StateOf(proc);
    state.clipping = true;
    Hold(ctx, state, {PathOperator::Kind::kClipEvenOdd, {}});
}

void Save(fz_context* ctx, pdf_processor* proc) {
    PathFilterState& state = StateOf(proc);
    Flush(ctx, state);
    Safely(ctx, [&] { state.saved.push_back(state.ctm); });
    if (state.next->op_q)
        state.next->op_q(ctx, state.next);
}

void Restore(fz_context* ctx, pdf_processor* proc) {
    PathFilterState& state = StateOf(proc);
    Flush(ctx, state);
    if (!state.saved.empty()) {
        state.ctm = state.saved.back();
        state.saved.pop_back();
    }
    if (state.next->op_Q)
        state.next->op_Q(ctx, state.next);
}

void Transform(fz_context* ctx, pdf_processor* proc, float a, float b, float c, float d, float e,
               float f) {
    PathFilterState& state = StateOf(proc);
    Flush(ctx, state);
    state.ctm = fz_concat(fz_make_matrix(a, b, c, d, e, f), state.ctm);
    if (state.next->op_cm)
        state.next->op_cm(ctx, state.next, a, b, c, d, e, f);
}

void Close(fz_context* ctx, pdf_processor* proc) {
    Flush(ctx, StateOf(proc));
}

pdf_processor* NewFilterProcessor(fz_context* ctx, PathFilterState* state) {
    auto* filter = reinterpret_cast<FilterProcessor*>(
        NewForwardingProcessor(ctx, sizeof(FilterProcessor), state->next));
    filter->state = state;
    pdf_processor* proc = &filter->head.super;
    proc->close_processor = Close;
    proc->op_q = Save;
    proc->op_Q = Restore;
    proc->op_cm = Transform;
    proc->op_m = MoveTo;
    proc->op_l = LineTo;
    proc->op_c = CurveTo;
    proc->op_v = CurveToV;
    proc->op_y = CurveToY;
    proc->op_h = ClosePath;
    proc->op_re = Rectangle;
    proc->op_W = Clip;
    proc->op_Wstar = ClipEvenOdd;
    proc->op_S = Paint<&pdf_processor::op_S>;
    proc->op_s = Paint<&pdf_processor::op_s>;
    proc->op_F = Paint<&pdf_processor::op_F>;
    proc->op_f = Paint<&pdf_processor::op_f>;
    proc->op_fstar = Paint<&pdf_processor::op_fstar>;
    proc->op_B = Paint<&pdf_processor::op_B>;
    proc->op_Bstar = Paint<&pdf_processor::op_Bstar>;
    proc->op_b = Paint<&pdf_processor::op_b>;
    proc->op_bstar = Paint<&pdf_processor::op_bstar>;
    proc->op_n = EndPathWithoutPainting;
    return proc;
}

}  // namespace

CoveredPathFilter::CoveredPathFilter(fz_context* ctx, pdf_processor* next,
                                     const RedactionAreas& areas)
    : ctx_(ctx), state_(std::make_unique<PathFilterState>()) {
    state_->next = next;
    state_->areas = &areas;
    PathFilterState* state = state_.get();
    state_->processor = CallMupdf(ctx, "cannot filter the page's paths",
                                  [&] { return NewFilterProcessor(ctx, state); });
}

CoveredPathFilter::~CoveredPathFilter() {
    pdf_drop_processor(ctx_, state_->processor);
}

pdf_processor* CoveredPathFilter::Processor() const {
    return state_->processor;
}

int CoveredPathFilter::Removed() const {
    return state_->removed;
}

}  // namespace pdfhost::engine
