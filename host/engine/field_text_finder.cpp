#include "engine/field_text_finder.h"

#include <algorithm>
#include <optional>

#include "engine/form_fields.h"
#include "engine/mupdf_call.h"

namespace pdfhost::engine {
namespace {

constexpr const char* kWhat = "cannot search the form fields";
// Selected values beyond this many are not looked at one by one (a damaged /V array).
constexpr int kMaxSelected = 1024;

// Positions in [from, to) of the characters that are not whitespace.
template <class CodeAt>
std::vector<int> Visible(int from, int to, CodeAt codeAt) {
    std::vector<int> positions;
    for (int i = from; i < to; ++i) {
        if (!IsSpaceChar(codeAt(i)))
            positions.push_back(i);
    }
    return positions;
}

std::vector<int> VisibleOf(const std::u32string& text) {
    return Visible(0, static_cast<int>(text.size()),
                   [&](int i) { return text[static_cast<std::size_t>(i)]; });
}

std::vector<int> VisibleOf(const PageText& drawn, int from, int to) {
    return Visible(from, to,
                   [&](int i) { return drawn.Chars()[static_cast<std::size_t>(i)].code; });
}

// Where a control's appearance draws a text: for each character of the text that is not
// whitespace, the drawn character that shows it. Empty when the appearance does not show it.
class DrawnPlaces {
  public:
    DrawnPlaces() = default;

    // `text` drawn as the whole of `drawn`, whitespace aside (a text field's value).
    static DrawnPlaces AsWhole(const std::u32string& text, const PageText& drawn) {
        return Paired(text, VisibleOf(text), drawn, VisibleOf(drawn, 0, drawn.CharCount()));
    }

    // `text` drawn as one whole line of `drawn`, the first such (a choice's option).
    static DrawnPlaces AsLine(const std::u32string& text, const PageText& drawn) {
        const std::vector<int> textVisible = VisibleOf(text);
        for (const TextLine& line : drawn.Lines()) {
            DrawnPlaces places = Paired(text, textVisible, drawn,
                                        VisibleOf(drawn, line.first, line.first + line.count));
            if (places.Drawn())
                return places;
        }
        return {};
    }

    bool Drawn() const { return !drawnVisible_.empty(); }

    // Whether drawn character `index` is part of the text's run.
    bool Covers(int index) const {
        return Drawn() && index >= drawnVisible_.front() && index <= drawnVisible_.back();
    }

    // The drawn boxes of the text's characters [first, first + count), if they can be told.
    std::optional<std::vector<Rect>> Boxes(const PageText& drawn, int first, int count) const {
        if (!Drawn())
            return std::nullopt;
        const auto begin = std::lower_bound(textVisible_.begin(), textVisible_.end(), first);
        const auto end = std::lower_bound(textVisible_.begin(), textVisible_.end(), first + count);
        if (begin == end)
            return std::nullopt;
        const int from = drawnVisible_[static_cast<std::size_t>(begin - textVisible_.begin())];
        const int to = drawnVisible_[static_cast<std::size_t>(end - textVisible_.begin()) - 1];
        return drawn.LineBoxes(from, to - from + 1);
    }

  private:
    static DrawnPlaces Paired(const std::u32string& text, std::vector<int> textVisible,
                              const PageText& drawn, std::vector<int> drawnVisible) {
        if (textVisible.empty() || textVisible.size() != drawnVisible.size())
            return {};
        for (std::size_t i = 0; i < textVisible.size(); ++i) {
            if (text[static_cast<std::size_t>(textVisible[i])] !=
                drawn.Chars()[static_cast<std::size_t>(drawnVisible[i])].code) {
                return {};
            }
        }
        DrawnPlaces places;
        places.textVisible_ = std::move(textVisible);
        places.drawnVisible_ = std::move(drawnVisible);
        return places;
    }

    std::vector<int> textVisible_;
    std::vector<int> drawnVisible_;
};

// One selected entry of a choice field: its value (the option's export value) and the text
// the option shows, when that differs.
struct SelectedOption {
    std::u32string value;
    std::u32string shown;
};

// The selected values of a choice field, in the order of /V, each with its option's shown text.
std::vector<SelectedOption> SelectedOf(fz_context* ctx, pdf_obj* field) {
    std::vector<SelectedOption> selected;
    CallMupdf(ctx, kWhat, [&] {
        pdf_obj* value = pdf_dict_get_inheritable(ctx, field, PDF_NAME(V));
        const bool many = pdf_is_array(ctx, value);
        const int count = std::min(many ? pdf_array_len(ctx, value) : 1, kMaxSelected);
        const int options = pdf_choice_field_option_count(ctx, field);
        for (int i = 0; i < count; ++i) {
            pdf_obj* item = many ? pdf_array_get(ctx, value, i) : value;
            const char* text =
                pdf_is_name(ctx, item) ? pdf_to_name(ctx, item) : pdf_to_text_string(ctx, item);
            SelectedOption option{DecodeUtf8(text), {}};
            for (int o = 0; o < options; ++o) {
                const char* exported = pdf_choice_field_option(ctx, field, 1, o);
                if (exported == nullptr || option.value != DecodeUtf8(exported))
                    continue;
                const char* shown = pdf_choice_field_option(ctx, field, 0, o);
                if (shown != nullptr && option.value != DecodeUtf8(shown))
                    option.shown = DecodeUtf8(shown);
                break;
            }
            selected.push_back(std::move(option));
        }
    });
    return selected;
}

// Collects the matches of one page's controls.
class ControlSearch {
  public:
    ControlSearch(fz_context* ctx, const InteractiveForm& form, const TextPattern& pattern,
                  std::vector<FieldMatch>& found)
        : ctx_(ctx), form_(form), pattern_(pattern), found_(found) {}

    // A text field's value, as its appearance draws it.
    void TextValue(pdf_annot* widget, pdf_obj* control, pdf_obj* field) {
        const std::u32string value = DecodeUtf8(form_.Value(field));
        const std::vector<TextMatch> matches = pattern_.FindAll(PageText::OfPlainText(value));
        if (matches.empty())
            return;
        const PageText drawn = PageText::OfAnnotation(ctx_, widget);
        const DrawnPlaces places = DrawnPlaces::AsWhole(value, drawn);
        for (const TextMatch& match : matches)
            Add(control, field, value, match, places.Boxes(drawn, match.first, match.count));
    }

    // A combo or list box: its value (the selected options' export values, several joined with
    // ", "), the shown texts of the selected options, and every option its appearance draws.
    // A selected option is placed on the line of the appearance that shows it.
    void ChoiceValue(pdf_annot* widget, pdf_obj* control, pdf_obj* field) {
        const std::u32string value = DecodeUtf8(form_.Value(field));
        const PageText drawn = PageText::OfAnnotation(ctx_, widget);
        std::vector<SelectedOption> selected = SelectedOf(ctx_, field);
        // Where each selected value starts in `value`; one whole value when they do not join up
        // to it as the form joins them.
        std::vector<int> starts;
        std::u32string joined;
        for (const SelectedOption& option : selected) {
            if (!starts.empty())
                joined += U", ";
            starts.push_back(static_cast<int>(joined.size()));
            joined += option.value;
        }
        if (joined != value) {
            selected = {SelectedOption{value, {}}};
            starts = {0};
        }
        std::vector<DrawnPlaces> valuePlaces;
        for (const SelectedOption& option : selected)
            valuePlaces.push_back(DrawnPlaces::AsLine(option.value, drawn));

        for (const TextMatch& match : pattern_.FindAll(PageText::OfPlainText(value))) {
            std::optional<std::vector<Rect>> boxes;
            const auto after = std::upper_bound(starts.begin(), starts.end(), match.first);
            const std::size_t item = static_cast<std::size_t>(after - starts.begin()) - 1;
            const int first = match.first - starts[item];
            if (first + match.count <= static_cast<int>(selected[item].value.size()))
                boxes = valuePlaces[item].Boxes(drawn, first, match.count);
            Add(control, field, value, match, boxes);
        }
        // A shown text the appearance does not draw (no appearance, scrolled out of view) is
        // searched on its own; drawn, it is found below with the other drawn options.
        for (const SelectedOption& option : selected) {
            if (option.shown.empty() || DrawnPlaces::AsLine(option.shown, drawn).Drawn())
                continue;
            for (const TextMatch& match : pattern_.FindAll(PageText::OfPlainText(option.shown)))
                Add(control, field, {}, match, std::nullopt);
        }
        for (const TextMatch& match : pattern_.FindAll(drawn)) {
            const bool inValue =
                std::any_of(valuePlaces.begin(), valuePlaces.end(),
                            [&](const DrawnPlaces& places) { return places.Covers(match.first); });
            if (!inValue)
                Add(control, field, {}, match, drawn.LineBoxes(match.first, match.count));
        }
    }

  private:
    void Add(pdf_obj* control, pdf_obj* field, std::u32string value, const TextMatch& match,
             std::optional<std::vector<Rect>> boxes) {
        found_.push_back(FieldMatch{
            ObjPtr(ctx_, pdf_keep_obj(ctx_, control)), ObjPtr(ctx_, pdf_keep_obj(ctx_, field)),
            std::move(value), match, boxes.value_or(std::vector<Rect>{form_.RectOf(control)})});
    }

    fz_context* ctx_;
    const InteractiveForm& form_;
    const TextPattern& pattern_;
    std::vector<FieldMatch>& found_;
};

}  // namespace

std::vector<FieldMatch> FindInFieldValues(Document& document, int page,
                                          const TextPattern& pattern) {
    std::vector<FieldMatch> found;
    if (page < 0 || page >= document.PageCount())
        return found;
    fz_context* ctx = document.fz();
    const InteractiveForm form(document);
    ControlSearch search(ctx, form, pattern, found);
    const PagePtr loaded = document.LoadPage(page, kWhat);
    for (pdf_annot* widget =
             CallMupdf(ctx, kWhat, [&] { return pdf_first_widget(ctx, loaded.get()); });
         widget != nullptr;
         widget = CallMupdf(ctx, kWhat, [&] { return pdf_next_widget(ctx, widget); })) {
        pdf_obj* control = CallMupdf(ctx, kWhat, [&] {
            return pdf_resolve_indirect_chain(ctx, pdf_annot_obj(ctx, widget));
        });
        const ControlType type = form.TypeOf(control);
        if (HoldsText(type))
            search.TextValue(widget, control, form.FieldOf(control));
        else if (type == ControlType::kComboBox || type == ControlType::kListBox)
            search.ChoiceValue(widget, control, form.FieldOf(control));
    }
    return found;
}

}  // namespace pdfhost::engine
