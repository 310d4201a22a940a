#include "engine/covered_path_filter.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>
#include <vector>

#include "engine/forwarding_processor.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/path_cutting.h"
#include "engine/pattern_redaction.h"

namespace pdfhost::engine {

// Forms drawn inside forms deeper than this are not walked.
constexpr int kMaxFormDepth = 16;

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
    bool evenOddClip = false;
    int removed = 0;
    int cut = 0;
    // A path being cut: the held operators of its subpaths that meet no area (ranges into
    // `path`), and the cut parts of the others, in page space.
    struct Kept {
        std::size_t begin;
        std::size_t end;
        PathPoint userStart;
    };
    std::vector<Kept> untouched;
    std::vector<Polyline> fills;
    std::vector<Polyline> strokes;
    std::vector<PlacedForm> forms;
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
    state.evenOddClip = false;
}

// Passes a held path on unchanged.
void Flush(fz_context* ctx, PathFilterState& state) {
    for (const PathOperator& op : state.path)
        Replay(ctx, state.next, op);
    ResetPath(state);
}

// Curves are cut as this many straight segments per this many points of their control
// polygon's length, within the limits below.
constexpr float kCurveStep = 2.0f;
constexpr int kMinCurveSegments = 4;
constexpr int kMaxCurveSegments = 128;

PathPoint ToPage(const fz_matrix& ctm, float x, float y) {
    const fz_point p = fz_transform_point_xy(x, y, ctm);
    return PathPoint{p.x, p.y};
}

void AppendCurve(std::vector<PathPoint>& points, PathPoint p1, PathPoint p2, PathPoint p3) {
    const PathPoint p0 = points.back();
    auto length = [](PathPoint a, PathPoint b) { return std::hypot(b.x - a.x, b.y - a.y); };
    const float polygon = length(p0, p1) + length(p1, p2) + length(p2, p3);
    const int n =
        std::clamp(static_cast<int>(polygon / kCurveStep), kMinCurveSegments, kMaxCurveSegments);
    for (int i = 1; i <= n; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(n);
        const float u = 1 - t;
        const float a = u * u * u, b = 3 * u * u * t, c = 3 * u * t * t, d = t * t * t;
        points.push_back(PathPoint{a * p0.x + b * p1.x + c * p2.x + d * p3.x,
                                   a * p0.y + b * p1.y + c * p2.y + d * p3.y});
    }
}

// One subpath of the held path: its operators [begin, end), where it starts in user space (a
// subpath may begin without a moveto), and its points in page space.
struct Subpath {
    std::size_t begin = 0;
    std::size_t end = 0;
    PathPoint userStart;
    Polyline line;
};

std::vector<Subpath> SubpathsOf(const PathFilterState& state) {
    std::vector<Subpath> subpaths;
    // Current and start points, in page and in user space.
    PathPoint start{};
    PathPoint current{};
    PathPoint userStart{};
    PathPoint userCurrent{};
    auto open = [&](std::size_t at) {
        if (subpaths.empty() || subpaths.back().end != at || subpaths.back().line.closed) {
            subpaths.push_back(Subpath{at, at, userCurrent, Polyline{{current}, false}});
            start = current;
            userStart = userCurrent;
        }
    };
    const fz_matrix& m = state.ctm;
    for (std::size_t i = 0; i < state.path.size(); ++i) {
        const PathOperator& op = state.path[i];
        const float* v = op.v;
        switch (op.kind) {
            case PathOperator::Kind::kMove:
                current = ToPage(m, v[0], v[1]);
                userCurrent = PathPoint{v[0], v[1]};
                subpaths.push_back(Subpath{i, i, userCurrent, Polyline{{current}, false}});
                start = current;
                userStart = userCurrent;
                break;
            case PathOperator::Kind::kLine:
                open(i);
                current = ToPage(m, v[0], v[1]);
                userCurrent = PathPoint{v[0], v[1]};
                subpaths.back().line.points.push_back(current);
                break;
            case PathOperator::Kind::kCurve:
            case PathOperator::Kind::kCurveV:
            case PathOperator::Kind::kCurveY: {
                open(i);
                const bool v_ = op.kind == PathOperator::Kind::kCurveV;
                const bool y_ = op.kind == PathOperator::Kind::kCurveY;
                const PathPoint p1 = v_ ? current : ToPage(m, v[0], v[1]);
                const PathPoint p2 = v_ ? ToPage(m, v[0], v[1])
                                        : (y_ ? ToPage(m, v[2], v[3]) : ToPage(m, v[2], v[3]));
                const PathPoint p3 = v_ || y_ ? ToPage(m, v[2], v[3]) : ToPage(m, v[4], v[5]);
                AppendCurve(subpaths.back().line.points, p1, p2, p3);
                current = p3;
                userCurrent = v_ || y_ ? PathPoint{v[2], v[3]} : PathPoint{v[4], v[5]};
                break;
            }
            case PathOperator::Kind::kClose:
                if (!subpaths.empty() && subpaths.back().end == i)
                    subpaths.back().line.closed = true;
                current = start;
                userCurrent = userStart;
                break;
            case PathOperator::Kind::kRect: {
                const PathPoint corner = ToPage(m, v[0], v[1]);
                subpaths.push_back(Subpath{
                    i, i, PathPoint{v[0], v[1]},
                    Polyline{{corner, ToPage(m, v[0] + v[2], v[1]),
                              ToPage(m, v[0] + v[2], v[1] + v[3]), ToPage(m, v[0], v[1] + v[3])},
                             true}});
                current = start = corner;
                userCurrent = userStart = PathPoint{v[0], v[1]};
                break;
            }
            case PathOperator::Kind::kClip:
            case PathOperator::Kind::kClipEvenOdd:
                break;
        }
        if (!subpaths.empty() && subpaths.back().end == i)
            subpaths.back().end = i + 1;
    }
    return subpaths;
}

Rect BoundsOf(const Polyline& line) {
    fz_rect r = fz_empty_rect;
    for (const PathPoint& p : line.points)
        r = fz_include_point_in_rect(r, fz_make_point(p.x, p.y));
    return Rect{r.x0, r.y0, r.x1, r.y1};
}

// Splits the held path into the subpaths to keep as they are and the cut parts of the others
// (into the state). Plain C++: run it through Safely.
void CutHeldPath(PathFilterState& state, bool fill, bool stroke, bool closeLast) {
    state.untouched.clear();
    state.fills.clear();
    state.strokes.clear();
    std::vector<Subpath> subpaths = SubpathsOf(state);
    if (closeLast && !subpaths.empty())
        subpaths.back().line.closed = true;
    std::vector<Rect> boxes;
    for (const RedactionAreas::Area& area : state.areas->Areas())
        boxes.push_back(area.rect);
    std::vector<Polyline> touched;
    for (Subpath& subpath : subpaths) {
        if (state.areas->Touches(BoundsOf(subpath.line)))
            touched.push_back(std::move(subpath.line));
        else
            state.untouched.push_back({subpath.begin, subpath.end, subpath.userStart});
    }
    if (fill)
        state.fills = FillOutside(touched, boxes);
    if (stroke)
        state.strokes = StrokeOutside(touched, boxes);
}

void EmitLines(fz_context* ctx, pdf_processor* next, const fz_matrix& toUser,
               const std::vector<Polyline>& lines) {
    for (const Polyline& line : lines) {
        for (std::size_t i = 0; i < line.points.size(); ++i) {
            const fz_point p = fz_transform_point_xy(line.points[i].x, line.points[i].y, toUser);
            if (i == 0 && next->op_m)
                next->op_m(ctx, next, p.x, p.y);
            else if (i > 0 && next->op_l)
                next->op_l(ctx, next, p.x, p.y);
        }
        if (line.closed && next->op_h)
            next->op_h(ctx, next);
    }
}

// The held subpaths that meet no area, as they were; one that began without its own moveto
// gets one, since what came before it may be cut.
void EmitUntouched(fz_context* ctx, PathFilterState& state, bool closeLast = false) {
    for (const PathFilterState::Kept& kept : state.untouched) {
        const PathOperator::Kind first = state.path[kept.begin].kind;
        if (first != PathOperator::Kind::kMove && first != PathOperator::Kind::kRect &&
            state.next->op_m) {
            state.next->op_m(ctx, state.next, kept.userStart.x, kept.userStart.y);
        }
        for (std::size_t i = kept.begin; i < kept.end; ++i)
            Replay(ctx, state.next, state.path[i]);
        if (closeLast && kept.end == state.path.size() && state.next->op_h)
            state.next->op_h(ctx, state.next);
    }
}

using PaintOperator = void (*pdf_processor::*)(fz_context*, pdf_processor*);

enum class Painting { kFill, kStroke, kBoth, kNone };

// A painting operator: a path that meets no area passes as it was; one that does is cut to
// what lies outside the areas (see FillOutside, StrokeOutside) and painted by the same rule.
// A clipping path becomes its part outside the areas (an empty clip when none is left); a
// path that is not painted goes.
template <PaintOperator Member, Painting kind, bool evenOdd = false, bool closes = false>
void Paint(fz_context* ctx, pdf_processor* proc) {
    PathFilterState& state = StateOf(proc);
    pdf_processor* next = state.next;
    // A straight horizontal or vertical path has bounds without area, yet it may cross a box.
    const bool meets = !state.path.empty() && fz_is_valid_rect(state.bounds) &&
                       state.areas->Touches(Rect{state.bounds.x0, state.bounds.y0, state.bounds.x1,
                                                 state.bounds.y1});
    if (!meets) {
        Flush(ctx, state);
        if (next->*Member)
            (next->*Member)(ctx, next);
        return;
    }
    const fz_matrix toUser = fz_invert_matrix(state.ctm);
    const bool invertible = fz_matrix_expansion(state.ctm) > 0;
    if (!invertible || (kind == Painting::kNone && !state.clipping)) {
        ++state.removed;
        ResetPath(state);
        return;
    }
    const bool fills = state.clipping || kind == Painting::kFill || kind == Painting::kBoth;
    const bool strokes = !state.clipping && (kind == Painting::kStroke || kind == Painting::kBoth);
    Safely(ctx, [&] { CutHeldPath(state, fills, strokes, closes); });
    const bool nothingLeft =
        state.untouched.empty() && state.fills.empty() && state.strokes.empty();
    nothingLeft ? ++state.removed : ++state.cut;
    if (state.clipping) {
        EmitUntouched(ctx, state);
        EmitLines(ctx, next, toUser, state.fills);
        if (state.untouched.empty() && state.fills.empty()) {
            // Nothing of the clip is left outside the areas: clip to a point beside them.
            float x = state.areas->Areas().front().rect.left;
            for (const RedactionAreas::Area& area : state.areas->Areas())
                x = std::min(x, area.rect.left);
            const fz_point p =
                fz_transform_point_xy(x - 1, state.areas->Areas().front().rect.bottom, toUser);
            if (next->op_m && next->op_h) {
                next->op_m(ctx, next, p.x, p.y);
                next->op_h(ctx, next);
            }
        }
        if (state.evenOddClip ? next->op_Wstar : next->op_W)
            (next->*(state.evenOddClip ? &pdf_processor::op_Wstar : &pdf_processor::op_W))(ctx,
                                                                                           next);
        if (next->*Member)
            (next->*Member)(ctx, next);
        ResetPath(state);
        return;
    }
    // Paths kept as they were and the cut fill share one fill; strokes are drawn after it.
    if (fills && (!state.untouched.empty() || !state.fills.empty())) {
        EmitUntouched(ctx, state);
        EmitLines(ctx, next, toUser, state.fills);
        PaintOperator fill = evenOdd ? &pdf_processor::op_fstar : &pdf_processor::op_f;
        if (next->*fill)
            (next->*fill)(ctx, next);
    }
    if (strokes && (!state.untouched.empty() || !state.strokes.empty())) {
        EmitUntouched(ctx, state, closes);
        EmitLines(ctx, next, toUser, state.strokes);
        if (next->op_S)
            next->op_S(ctx, next);
    }
    ResetPath(state);
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
    state.evenOddClip = true;
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

// A form drawn here: noted with where it is drawn, to cut its paths afterwards.
void DrawForm(fz_context* ctx, pdf_processor* proc, const char* name, pdf_obj* form,
              pdf_obj* page_resources) {
    PathFilterState& state = StateOf(proc);
    Flush(ctx, state);
    const fz_matrix placed = fz_concat(pdf_dict_get_matrix(ctx, form, PDF_NAME(Matrix)), state.ctm);
    Safely(ctx, [&] {
        state.forms.push_back(PlacedForm{ObjPtr(ctx, pdf_keep_obj(ctx, form)), placed});
    });
    if (state.next->op_Do_form)
        state.next->op_Do_form(ctx, state.next, name, form, page_resources);
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
    proc->op_S = Paint<&pdf_processor::op_S, Painting::kStroke>;
    proc->op_s = Paint<&pdf_processor::op_s, Painting::kStroke, false, true>;
    proc->op_F = Paint<&pdf_processor::op_F, Painting::kFill>;
    proc->op_f = Paint<&pdf_processor::op_f, Painting::kFill>;
    proc->op_fstar = Paint<&pdf_processor::op_fstar, Painting::kFill, true>;
    proc->op_B = Paint<&pdf_processor::op_B, Painting::kBoth>;
    proc->op_Bstar = Paint<&pdf_processor::op_Bstar, Painting::kBoth, true>;
    proc->op_b = Paint<&pdf_processor::op_b, Painting::kBoth, false, true>;
    proc->op_bstar = Paint<&pdf_processor::op_bstar, Painting::kBoth, true, true>;
    proc->op_n = Paint<&pdf_processor::op_n, Painting::kNone>;
    proc->op_Do_form = DrawForm;
    return proc;
}

}  // namespace

CoveredPathFilter::CoveredPathFilter(fz_context* ctx, pdf_processor* next,
                                     const RedactionAreas& areas, fz_matrix ctm)
    : ctx_(ctx), state_(std::make_unique<PathFilterState>()) {
    state_->next = next;
    state_->ctm = ctm;
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

int CoveredPathFilter::Cut() const {
    return state_->cut;
}

std::vector<PlacedForm> CoveredPathFilter::TakeForms() {
    return std::exchange(state_->forms, {});
}

namespace {

// The tiling patterns a form's content uses, redacted where the form was drawn. The form gets
// resources and a pattern dictionary of its own first, as they may be shared with forms that
// the redaction does not change.
void RedactPatternsOfForm(fz_context* ctx, pdf_document* pdf, pdf_obj* form,
                          const RedactionAreas& areas, fz_matrix ctm, int depth) {
    const char* what = "cannot redact the patterns of a form";
    pdf_obj* resources = CallMupdf(ctx, what, [&] {
        pdf_obj* shared = pdf_dict_get(ctx, form, PDF_NAME(Resources));
        if (pdf_dict_len(ctx, pdf_dict_get(ctx, shared, PDF_NAME(Pattern))) == 0)
            return static_cast<pdf_obj*>(nullptr);
        pdf_obj* own = pdf_copy_dict(ctx, shared);
        fz_try(ctx) {
            pdf_dict_put_drop(ctx, own, PDF_NAME(Pattern),
                              pdf_copy_dict(ctx, pdf_dict_get(ctx, shared, PDF_NAME(Pattern))));
            pdf_dict_put(ctx, form, PDF_NAME(Resources), own);
        }
        fz_always(ctx) pdf_drop_obj(ctx, own);
        fz_catch(ctx) fz_rethrow(ctx);
        return pdf_dict_get(ctx, form, PDF_NAME(Resources));
    });
    if (resources != nullptr)
        RedactTilingPatterns(ctx, pdf, resources, areas, ctm, depth);
}

}  // namespace

void CutPathsInForms(fz_context* ctx, pdf_document* pdf, std::vector<PlacedForm> forms,
                     const RedactionAreas& areas, int depth) {
    const char* what = "cannot cut the paths of a form";
    // Forms drawn inside forms are walked breadth first, to a depth; a form met again on the
    // same way down is a loop and is not entered.
    struct Pending {
        PlacedForm form;
        int depth;
        std::vector<int> way;
    };
    std::vector<Pending> pending;
    for (PlacedForm& form : forms)
        pending.push_back(Pending{std::move(form), depth, {}});
    while (!pending.empty()) {
        Pending item = std::move(pending.back());
        pending.pop_back();
        pdf_obj* form = item.form.form.get();
        const int number = CallMupdf(ctx, what, [&] { return pdf_to_num(ctx, form); });
        if (item.depth >= kMaxFormDepth ||
            std::find(item.way.begin(), item.way.end(), number) != item.way.end()) {
            continue;
        }
        item.way.push_back(number);
        BufferPtr buffer(ctx, CallMupdf(ctx, what, [&] { return fz_new_buffer(ctx, 1024); }));
        ProcessorPtr writer(ctx, CallMupdf(ctx, what, [&] {
                                return pdf_new_buffer_processor(ctx, buffer.get(), 1);
                            }));
        CoveredPathFilter paths(ctx, writer.get(), areas, item.form.ctm);
        CallMupdf(ctx, what, [&] {
            pdf_obj* resources = pdf_dict_get(ctx, form, PDF_NAME(Resources));
            pdf_process_contents(ctx, paths.Processor(), pdf, resources, form, nullptr);
            pdf_close_processor(ctx, paths.Processor());
            pdf_close_processor(ctx, writer.get());
        });
        if (paths.Removed() + paths.Cut() > 0)
            CallMupdf(ctx, what, [&] { pdf_update_stream(ctx, pdf, form, buffer.get(), 0); });
        RedactPatternsOfForm(ctx, pdf, form, areas, item.form.ctm, item.depth + 1);
        for (PlacedForm& inner : paths.TakeForms())
            pending.push_back(Pending{std::move(inner), item.depth + 1, item.way});
    }
}

}  // namespace pdfhost::engine
