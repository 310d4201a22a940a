#include "engine/field_text_finder.h"

#include <algorithm>
#include <optional>

#include "engine/form_fields.h"
#include "engine/mupdf_call.h"

namespace pdfhost::engine {
namespace {

constexpr const char* kWhat = "cannot search the form fields";

// Positions of the characters of `text` that are not whitespace.
template <class CodeAt>
std::vector<int> Visible(int count, CodeAt codeAt) {
    std::vector<int> positions;
    for (int i = 0; i < count; ++i) {
        if (!IsSpaceChar(codeAt(i)))
            positions.push_back(i);
    }
    return positions;
}

// Maps characters of a field's value onto the characters its appearance draws, when both
// show the same characters apart from whitespace.
class AppearanceMap {
  public:
    AppearanceMap(const std::u32string& value, PageText drawn) : drawn_(std::move(drawn)) {
        const std::vector<TextChar>& chars = drawn_.Chars();
        valueVisible_ = Visible(static_cast<int>(value.size()),
                                [&](int i) { return value[static_cast<std::size_t>(i)]; });
        drawnVisible_ = Visible(drawn_.CharCount(),
                                [&](int i) { return chars[static_cast<std::size_t>(i)].code; });
        usable_ = valueVisible_.size() == drawnVisible_.size();
        for (std::size_t i = 0; usable_ && i < valueVisible_.size(); ++i) {
            usable_ = value[static_cast<std::size_t>(valueVisible_[i])] ==
                      chars[static_cast<std::size_t>(drawnVisible_[i])].code;
        }
    }

    // The drawn boxes of value characters [first, first + count), if they can be told.
    std::optional<std::vector<Rect>> Boxes(const TextMatch& match) const {
        if (!usable_)
            return std::nullopt;
        const auto begin =
            std::lower_bound(valueVisible_.begin(), valueVisible_.end(), match.first);
        const auto end =
            std::lower_bound(valueVisible_.begin(), valueVisible_.end(), match.first + match.count);
        if (begin == end)
            return std::nullopt;
        const int from = drawnVisible_[static_cast<std::size_t>(begin - valueVisible_.begin())];
        const int to = drawnVisible_[static_cast<std::size_t>(end - valueVisible_.begin()) - 1];
        return drawn_.LineBoxes(from, to - from + 1);
    }

  private:
    PageText drawn_;
    std::vector<int> valueVisible_;
    std::vector<int> drawnVisible_;
    bool usable_ = false;
};

}  // namespace

std::vector<FieldMatch> FindInFieldValues(Document& document, int page,
                                          const TextPattern& pattern) {
    std::vector<FieldMatch> found;
    if (page < 0 || page >= document.PageCount())
        return found;
    fz_context* ctx = document.fz();
    const InteractiveForm form(document);
    const PagePtr loaded = document.LoadPage(page, kWhat);
    for (pdf_annot* widget =
             CallMupdf(ctx, kWhat, [&] { return pdf_first_widget(ctx, loaded.get()); });
         widget != nullptr;
         widget = CallMupdf(ctx, kWhat, [&] { return pdf_next_widget(ctx, widget); })) {
        pdf_obj* control = CallMupdf(ctx, kWhat, [&] {
            return pdf_resolve_indirect_chain(ctx, pdf_annot_obj(ctx, widget));
        });
        if (!HoldsText(form.TypeOf(control)))
            continue;
        pdf_obj* field = form.FieldOf(control);
        const std::u32string value = DecodeUtf8(form.Value(field));
        const std::vector<TextMatch> matches = pattern.FindAll(PageText::OfPlainText(value));
        if (matches.empty())
            continue;
        const AppearanceMap drawn(value, PageText::OfAnnotation(ctx, widget));
        for (const TextMatch& match : matches) {
            FieldMatch hit{ObjPtr(ctx, pdf_keep_obj(ctx, control)),
                           ObjPtr(ctx, pdf_keep_obj(ctx, field)),
                           value,
                           match,
                           {}};
            hit.rects = drawn.Boxes(match).value_or(std::vector<Rect>{form.RectOf(control)});
            found.push_back(std::move(hit));
        }
    }
    return found;
}

}  // namespace pdfhost::engine
