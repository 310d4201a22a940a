#include "engine/form_fields.h"

#include <algorithm>
#include <unordered_set>

#include "engine/mupdf_call.h"
#include "engine/permissions.h"

namespace pdfhost::engine {
namespace {

// Field trees and /Parent chains deeper than this are treated as broken (or cyclic).
constexpr int kMaxDepth = 64;
constexpr const char* kWhat = "cannot read the form";
constexpr const char* kWriteWhat = "cannot fill in the form";

pdf_obj* Resolved(fz_context* ctx, pdf_obj* object) {
    return CallMupdf(ctx, kWhat, [&] { return pdf_resolve_indirect_chain(ctx, object); });
}

bool IsWidget(fz_context* ctx, pdf_obj* dict) {
    return pdf_name_eq(ctx, pdf_dict_get(ctx, dict, PDF_NAME(Subtype)), PDF_NAME(Widget));
}

bool HasName(fz_context* ctx, pdf_obj* dict) {
    return pdf_dict_get(ctx, dict, PDF_NAME(T)) != nullptr;
}

// The widget dictionaries of a field: the field itself when it is one, and its unnamed kids.
std::vector<pdf_obj*> WidgetsOf(fz_context* ctx, pdf_obj* field) {
    std::vector<pdf_obj*> widgets;
    std::vector<std::pair<pdf_obj*, int>> pending{{field, 0}};
    std::unordered_set<pdf_obj*> seen;
    while (!pending.empty()) {
        pdf_obj* const node = pending.back().first;  // a plain name: lambdas below use it
        const int depth = pending.back().second;
        pending.pop_back();
        if (depth > kMaxDepth || !seen.insert(node).second)
            continue;
        const bool widget = CallMupdf(ctx, kWhat, [&] { return IsWidget(ctx, node); });
        if (widget)
            widgets.push_back(node);
        const int kids = CallMupdf(ctx, kWhat, [&] {
            return pdf_array_len(ctx, pdf_dict_get(ctx, node, PDF_NAME(Kids)));
        });
        for (int i = kids - 1; i >= 0; --i) {
            pdf_obj* kid = CallMupdf(ctx, kWhat, [&] {
                return pdf_resolve_indirect_chain(
                    ctx, pdf_array_get(ctx, pdf_dict_get(ctx, node, PDF_NAME(Kids)), i));
            });
            const bool named = CallMupdf(ctx, kWhat, [&] { return HasName(ctx, kid); });
            if (kid != nullptr && !named)
                pending.emplace_back(kid, depth + 1);
        }
    }
    return widgets;
}

// The live annotations of some widget dictionaries, with their pages kept loaded.
class LoadedWidgets {
  public:
    LoadedWidgets(const Document& document, const std::vector<pdf_obj*>& widgets) {
        fz_context* ctx = document.fz();
        const std::unordered_set<pdf_obj*> wanted(widgets.begin(), widgets.end());
        const int pageCount = document.PageCount();
        for (int index = 0; index < pageCount && annots_.size() < wanted.size(); ++index) {
            if (!PageHolds(ctx, document.PageObject(index, kWhat), wanted))
                continue;
            pages_.push_back(document.LoadPage(index, kWhat));
            pdf_page* page = pages_.back().get();
            for (pdf_annot* annot =
                     CallMupdf(ctx, kWhat, [&] { return pdf_first_widget(ctx, page); });
                 annot != nullptr;
                 annot = CallMupdf(ctx, kWhat, [&] { return pdf_next_widget(ctx, annot); })) {
                if (wanted.contains(Resolved(ctx, pdf_annot_obj(ctx, annot))))
                    annots_.push_back(annot);
            }
        }
    }

    const std::vector<pdf_annot*>& Annots() const { return annots_; }

  private:
    static bool PageHolds(fz_context* ctx, const ObjPtr& page,
                          const std::unordered_set<pdf_obj*>& wanted) {
        return CallMupdf(ctx, kWhat, [&] {
            pdf_obj* annots = pdf_dict_get(ctx, page.get(), PDF_NAME(Annots));
            const int count = pdf_array_len(ctx, annots);
            for (int i = 0; i < count; ++i) {
                if (wanted.contains(pdf_resolve_indirect_chain(ctx, pdf_array_get(ctx, annots, i))))
                    return true;
            }
            return false;
        });
    }

    std::vector<PagePtr> pages_;
    std::vector<pdf_annot*> annots_;  // owned by their pages
};

// Whether `value` is one of the options (export or shown value) of a choice field.
bool IsOption(fz_context* ctx, pdf_obj* field, const std::string& value) {
    return CallMupdf(ctx, kWhat, [&] {
        const int count = pdf_choice_field_option_count(ctx, field);
        for (int i = 0; i < count; ++i) {
            for (int exportValue = 0; exportValue < 2; ++exportValue) {
                const char* option = pdf_choice_field_option(ctx, field, exportValue, i);
                if (option != nullptr && value == option)
                    return true;
            }
        }
        return false;
    });
}

void RebuildAppearances(fz_context* ctx, const std::vector<pdf_annot*>& annots) {
    for (pdf_annot* annot : annots) {
        CallMupdf(ctx, kWriteWhat, [&] {
            pdf_dirty_annot(ctx, annot);
            pdf_update_annot(ctx, annot);
        });
    }
}

void AskReadersForAppearances(fz_context* ctx, pdf_document* doc) {
    CallMupdf(ctx, kWriteWhat, [&] {
        pdf_obj* form = pdf_dict_getp(ctx, pdf_trailer(ctx, doc), "Root/AcroForm");
        if (pdf_is_dict(ctx, form))
            pdf_dict_puts(ctx, form, "NeedAppearances", PDF_TRUE);
    });
}

}  // namespace

bool HoldsText(ControlType type) {
    return type == ControlType::kTextField || type == ControlType::kRichText ||
           type == ControlType::kFile;
}

std::vector<ObjPtr> InteractiveForm::PageControls(int page) const {
    std::vector<ObjPtr> controls;
    if (page < 0 || page >= document_.PageCount())
        return controls;
    fz_context* ctx = document_.fz();
    const ObjPtr page_obj = document_.PageObject(page, kWhat);
    const int count = CallMupdf(ctx, kWhat, [&] {
        return pdf_array_len(ctx, pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots)));
    });
    for (int i = 0; i < count; ++i) {
        pdf_obj* widget = CallMupdf(ctx, kWhat, [&]() -> pdf_obj* {
            pdf_obj* annots = pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots));
            pdf_obj* annot = pdf_resolve_indirect_chain(ctx, pdf_array_get(ctx, annots, i));
            return IsWidget(ctx, annot) ? pdf_keep_obj(ctx, annot) : nullptr;
        });
        if (widget != nullptr)
            controls.emplace_back(ctx, widget);
    }
    return controls;
}

ControlType InteractiveForm::TypeOf(pdf_obj* control) const {
    fz_context* ctx = document_.fz();
    struct Kind {
        pdf_obj* type;
        int flags;
    };
    const Kind kind = CallMupdf(ctx, kWhat, [&] {
        return Kind{pdf_dict_get_inheritable(ctx, control, PDF_NAME(FT)),
                    pdf_to_int(ctx, pdf_dict_get_inheritable(ctx, control, PDF_NAME(Ff)))};
    });
    auto is = [&](pdf_obj* name) { return pdf_name_eq(ctx, kind.type, name) != 0; };
    if (is(PDF_NAME(Btn))) {
        if (kind.flags & PDF_BTN_FIELD_IS_PUSHBUTTON)
            return ControlType::kPushButton;
        return (kind.flags & PDF_BTN_FIELD_IS_RADIO) ? ControlType::kRadioButton
                                                     : ControlType::kCheckBox;
    }
    if (is(PDF_NAME(Tx))) {
        if (kind.flags & PDF_TX_FIELD_IS_RICH_TEXT)
            return ControlType::kRichText;
        return (kind.flags & PDF_TX_FIELD_IS_FILE_SELECT) ? ControlType::kFile
                                                          : ControlType::kTextField;
    }
    if (is(PDF_NAME(Ch))) {
        return (kind.flags & PDF_CH_FIELD_IS_COMBO) ? ControlType::kComboBox
                                                    : ControlType::kListBox;
    }
    return is(PDF_NAME(Sig)) ? ControlType::kSignature : ControlType::kUnknown;
}

pdf_obj* InteractiveForm::FieldOf(pdf_obj* control) const {
    fz_context* ctx = document_.fz();
    return CallMupdf(ctx, kWhat, [&] {
        pdf_obj* node = pdf_resolve_indirect_chain(ctx, control);
        for (int depth = 0; node != nullptr && depth <= kMaxDepth; ++depth) {
            if (HasName(ctx, node))
                return node;
            node = pdf_resolve_indirect_chain(ctx, pdf_dict_get(ctx, node, PDF_NAME(Parent)));
        }
        return pdf_resolve_indirect_chain(ctx, control);
    });
}

Rect InteractiveForm::RectOf(pdf_obj* control) const {
    fz_context* ctx = document_.fz();
    const fz_rect rect =
        CallMupdf(ctx, kWhat, [&] { return pdf_dict_get_rect(ctx, control, PDF_NAME(Rect)); });
    return Rect{std::min(rect.x0, rect.x1), std::min(rect.y0, rect.y1), std::max(rect.x0, rect.x1),
                std::max(rect.y0, rect.y1)};
}

std::string InteractiveForm::FullName(pdf_obj* field) const {
    fz_context* ctx = document_.fz();
    std::vector<std::string> parts;
    pdf_obj* node = Resolved(ctx, field);
    for (int depth = 0; node != nullptr && depth <= kMaxDepth; ++depth) {
        const char* partial = CallMupdf(ctx, kWhat, [&]() -> const char* {
            pdf_obj* name = pdf_dict_get(ctx, node, PDF_NAME(T));
            return name != nullptr ? pdf_to_text_string(ctx, name) : nullptr;
        });
        if (partial != nullptr)
            parts.emplace_back(partial);
        node = CallMupdf(ctx, kWhat, [&] {
            return pdf_resolve_indirect_chain(ctx, pdf_dict_get(ctx, node, PDF_NAME(Parent)));
        });
    }
    std::string name;
    for (auto it = parts.rbegin(); it != parts.rend(); ++it)
        name += (name.empty() ? "" : ".") + *it;
    return name;
}

std::string InteractiveForm::Value(pdf_obj* field) const {
    fz_context* ctx = document_.fz();
    pdf_obj* value =
        CallMupdf(ctx, kWhat, [&] { return pdf_dict_get_inheritable(ctx, field, PDF_NAME(V)); });
    if (CallMupdf(ctx, kWhat, [&] { return pdf_is_array(ctx, value); })) {
        std::string joined;
        const int count = CallMupdf(ctx, kWhat, [&] { return pdf_array_len(ctx, value); });
        for (int i = 0; i < count; ++i) {
            const char* item = CallMupdf(
                ctx, kWhat, [&] { return pdf_to_text_string(ctx, pdf_array_get(ctx, value, i)); });
            joined += (i == 0 ? "" : ", ") + std::string(item);
        }
        return joined;
    }
    const ControlType type = TypeOf(field);
    if (value == nullptr && (type == ControlType::kCheckBox || type == ControlType::kRadioButton)) {
        return "Off";
    }
    const char* text = CallMupdf(ctx, kWhat, [&] { return pdf_field_value(ctx, field); });
    return text != nullptr ? text : "";
}

ObjPtr InteractiveForm::FindField(std::string_view fullName, int index) const {
    fz_context* ctx = document_.fz();
    pdf_document* doc = document_.pdf();
    pdf_obj* fields = CallMupdf(ctx, kWhat, [&] {
        return pdf_dict_getp(ctx, pdf_trailer(ctx, doc), "Root/AcroForm/Fields");
    });
    // Depth-first in the order of the tree: a stack of (node, depth), kids pushed in reverse.
    std::vector<std::pair<pdf_obj*, int>> pending;
    auto pushKids = [&](pdf_obj* array, int depth) {
        const int count = CallMupdf(ctx, kWhat, [&] { return pdf_array_len(ctx, array); });
        for (int i = count - 1; i >= 0; --i) {
            pdf_obj* kid = CallMupdf(ctx, kWhat, [&] {
                return pdf_resolve_indirect_chain(ctx, pdf_array_get(ctx, array, i));
            });
            if (kid != nullptr)
                pending.emplace_back(kid, depth);
        }
    };
    pushKids(fields, 0);
    std::unordered_set<pdf_obj*> seen;
    int found = 0;
    while (!pending.empty()) {
        pdf_obj* const node = pending.back().first;  // a plain name: lambdas below use it
        const int depth = pending.back().second;
        pending.pop_back();
        if (depth > kMaxDepth || !seen.insert(node).second)
            continue;
        pdf_obj* kids =
            CallMupdf(ctx, kWhat, [&] { return pdf_dict_get(ctx, node, PDF_NAME(Kids)); });
        const bool terminal = CallMupdf(ctx, kWhat, [&] {
            if (!HasName(ctx, node))
                return false;
            const int count = pdf_array_len(ctx, kids);
            for (int i = 0; i < count; ++i) {
                if (HasName(ctx, pdf_resolve_indirect_chain(ctx, pdf_array_get(ctx, kids, i))))
                    return false;
            }
            return true;
        });
        if (terminal && FullName(node) == fullName && found++ == index)
            return ObjPtr(ctx, pdf_keep_obj(ctx, node));
        pushKids(kids, depth + 1);
    }
    return {};
}

bool InteractiveForm::SetValue(pdf_obj* field, std::string_view value, bool buildAppearances) {
    if ((document_.Permissions() & (permission::kFillForms | permission::kAnnotate)) == 0)
        return false;
    fz_context* ctx = document_.fz();
    pdf_document* doc = document_.pdf();
    const ControlType type = TypeOf(field);
    const std::string text(value);
    bool taken = false;
    switch (type) {
        case ControlType::kCheckBox:
        case ControlType::kRadioButton:
            taken = SetButton(field, text);
            break;
        case ControlType::kListBox:
        case ControlType::kComboBox: {
            const int flags = CallMupdf(ctx, kWhat, [&] { return pdf_field_flags(ctx, field); });
            const bool free = (flags & PDF_CH_FIELD_IS_EDIT) != 0 && type == ControlType::kComboBox;
            if (!text.empty() && !free && !IsOption(ctx, field, text))
                return false;
            [[fallthrough]];
        }
        case ControlType::kTextField:
        case ControlType::kRichText:
        case ControlType::kFile: {
            const LoadedWidgets widgets(document_, WidgetsOf(ctx, field));
            if (buildAppearances && !widgets.Annots().empty()) {
                pdf_annot* first = widgets.Annots().front();
                const bool choice = !HoldsText(type);
                taken = CallMupdf(ctx, kWriteWhat, [&] {
                    return (choice ? pdf_set_choice_field_value(ctx, first, text.c_str())
                                   : pdf_set_text_field_value(ctx, first, text.c_str())) != 0;
                });
                if (taken)
                    RebuildAppearances(ctx, widgets.Annots());
            } else {
                taken = CallMupdf(ctx, kWriteWhat, [&] {
                    return pdf_set_field_value(ctx, doc, field, text.c_str(), 1) != 0;
                });
                if (taken)
                    AskReadersForAppearances(ctx, doc);
            }
            break;
        }
        default:
            return false;
    }
    if (taken)
        document_.MarkChanged();
    return taken;
}

bool InteractiveForm::SetButton(pdf_obj* field, std::string_view value) {
    fz_context* ctx = document_.fz();
    const std::vector<pdf_obj*> widgets = WidgetsOf(ctx, field);
    if (widgets.empty())
        return false;
    // The on-state name of each control; "Yes" for a control without appearances.
    std::vector<std::string> onStates;
    for (pdf_obj* widget : widgets) {
        const char* name = CallMupdf(ctx, kWhat, [&] {
            pdf_obj* on = pdf_button_field_on_state(ctx, widget);
            return on != nullptr ? pdf_to_name(ctx, on) : "Yes";
        });
        onStates.emplace_back(name);
    }
    std::string wanted;
    if (value == "true") {
        wanted = onStates.front();
    } else if (!value.empty() && value != "Off" && value != "false") {
        if (std::find(onStates.begin(), onStates.end(), value) == onStates.end())
            return false;
        wanted = value;
    }
    const std::string state = wanted.empty() ? "Off" : wanted;
    CallMupdf(ctx, kWriteWhat, [&] {
        pdf_dict_put_name(ctx, field, PDF_NAME(V), state.c_str());
        for (std::size_t i = 0; i < widgets.size(); ++i) {
            pdf_dict_put_name(ctx, widgets[i], PDF_NAME(AS),
                              onStates[i] == state ? state.c_str() : "Off");
        }
    });
    // Controls that have no appearance of their own get one built.
    const LoadedWidgets loaded(document_, widgets);
    for (pdf_annot* annot : loaded.Annots()) {
        CallMupdf(ctx, kWriteWhat, [&] {
            if (pdf_dict_get(ctx, pdf_annot_obj(ctx, annot), PDF_NAME(AP)) == nullptr) {
                pdf_dirty_annot(ctx, annot);
                pdf_update_annot(ctx, annot);
            }
        });
    }
    return true;
}

}  // namespace pdfhost::engine
