#include "engine/form_builder.h"

#include <set>

#include "engine/content_stream.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {
namespace {

constexpr const char* kWhat = "cannot build the form";
constexpr const char* kTextAppearance = "/Helv 10 Tf 0 g";
constexpr int kPrintFlag = 4;

int FieldFlags(const FieldDescription& field) {
    switch (field.kind) {
        case FieldKind::kText:
            return field.multiline ? PDF_TX_FIELD_IS_MULTILINE : 0;
        case FieldKind::kRichText:
            return PDF_TX_FIELD_IS_RICH_TEXT | (field.multiline ? PDF_TX_FIELD_IS_MULTILINE : 0);
        case FieldKind::kRadioGroup:
            return PDF_BTN_FIELD_IS_RADIO | PDF_BTN_FIELD_IS_NO_TOGGLE_TO_OFF;
        case FieldKind::kComboBox:
            return PDF_CH_FIELD_IS_COMBO;
        case FieldKind::kPushButton:
            return PDF_BTN_FIELD_IS_PUSHBUTTON;
        default:
            return 0;
    }
}

pdf_obj* FieldType(FieldKind kind) {
    switch (kind) {
        case FieldKind::kText:
        case FieldKind::kRichText:
            return PDF_NAME(Tx);
        case FieldKind::kComboBox:
        case FieldKind::kListBox:
            return PDF_NAME(Ch);
        case FieldKind::kSignature:
            return PDF_NAME(Sig);
        default:
            return PDF_NAME(Btn);
    }
}

bool IsButton(FieldKind kind) {
    return kind == FieldKind::kCheckBox || kind == FieldKind::kRadioGroup ||
           kind == FieldKind::kPushButton;
}

class FormWriter {
  public:
    explicit FormWriter(Document& document)
        : document_(document), ctx_(document.fz()), doc_(document.pdf()) {}

    void Add(const FieldDescription& field) {
        for (const ControlPlacement& control : field.controls) {
            if (control.page < 0 || control.page >= document_.PageCount()) {
                throw Error(std::string(kWhat) + ": no page " + std::to_string(control.page));
            }
        }
        const bool merged = field.controls.size() == 1 && field.kind != FieldKind::kRadioGroup;
        ObjPtr dict = NewIndirectDict();
        FillField(dict.get(), field);
        Attach(dict.get(), field.parent);
        for (const ControlPlacement& control : field.controls) {
            if (merged) {
                FillWidget(dict.get(), control, field);
                continue;
            }
            ObjPtr widget = NewIndirectDict();
            FillWidget(widget.get(), control, field);
            CallMupdf(ctx_, kWhat, [&] {
                pdf_dict_put(ctx_, widget.get(), PDF_NAME(Parent), dict.get());
                pdf_obj* kids = pdf_dict_get(ctx_, dict.get(), PDF_NAME(Kids));
                if (kids == nullptr)
                    kids = pdf_dict_put_array(ctx_, dict.get(), PDF_NAME(Kids), 2);
                pdf_array_push(ctx_, kids, widget.get());
            });
        }
        if (!IsButton(field.kind) && field.kind != FieldKind::kSignature) {
            for (const ControlPlacement& control : field.controls)
                pagesToDraw_.insert(control.page);
        }
    }

    // Text and choice controls get their appearance from MuPDF.
    void DrawTextControls() {
        for (const int index : pagesToDraw_) {
            const PagePtr page = document_.LoadPage(index, kWhat);
            CallMupdf(ctx_, kWhat, [&] {
                for (pdf_annot* widget = pdf_first_widget(ctx_, page.get()); widget != nullptr;
                     widget = pdf_next_widget(ctx_, widget)) {
                    const int type = pdf_widget_type(ctx_, widget);
                    if (type == PDF_WIDGET_TYPE_TEXT || type == PDF_WIDGET_TYPE_COMBOBOX ||
                        type == PDF_WIDGET_TYPE_LISTBOX) {
                        pdf_dirty_annot(ctx_, widget);
                        pdf_update_annot(ctx_, widget);
                    }
                }
            });
        }
    }

  private:
    ObjPtr NewIndirectDict() {
        return ObjPtr(ctx_,
                      CallMupdf(ctx_, kWhat, [&] { return pdf_add_new_dict(ctx_, doc_, 8); }));
    }

    // Root/AcroForm, with Helvetica as its default font, made on first use.
    pdf_obj* AcroForm() {
        return CallMupdf(ctx_, kWhat, [&] {
            pdf_obj* root = pdf_dict_get(ctx_, pdf_trailer(ctx_, doc_), PDF_NAME(Root));
            pdf_obj* form = pdf_dict_get(ctx_, root, PDF_NAME(AcroForm));
            if (form != nullptr)
                return form;
            form = pdf_add_new_dict(ctx_, doc_, 3);
            pdf_dict_put_drop(ctx_, root, PDF_NAME(AcroForm), form);
            pdf_dict_put_array(ctx_, form, PDF_NAME(Fields), 4);
            pdf_dict_put_text_string(ctx_, form, PDF_NAME(DA), "/Helv 0 Tf 0 g");
            pdf_obj* fonts = pdf_dict_put_dict(ctx_, pdf_dict_put_dict(ctx_, form, PDF_NAME(DR), 1),
                                               PDF_NAME(Font), 1);
            pdf_obj* helv = pdf_add_new_dict(ctx_, doc_, 4);
            pdf_dict_puts_drop(ctx_, fonts, "Helv", helv);
            pdf_dict_put(ctx_, helv, PDF_NAME(Type), PDF_NAME(Font));
            pdf_dict_put(ctx_, helv, PDF_NAME(Subtype), PDF_NAME(Type1));
            pdf_dict_put_name(ctx_, helv, PDF_NAME(BaseFont), "Helvetica");
            pdf_dict_put(ctx_, helv, PDF_NAME(Encoding), PDF_NAME(WinAnsiEncoding));
            return form;
        });
    }

    void FillField(pdf_obj* dict, const FieldDescription& field) {
        CallMupdf(ctx_, kWhat, [&] {
            pdf_dict_put_text_string(ctx_, dict, PDF_NAME(T), field.name.c_str());
            pdf_dict_put(ctx_, dict, PDF_NAME(FT), FieldType(field.kind));
            if (const int flags = FieldFlags(field); flags != 0)
                pdf_dict_put_int(ctx_, dict, PDF_NAME(Ff), flags);
            if (field.kind == FieldKind::kCheckBox || field.kind == FieldKind::kRadioGroup) {
                pdf_dict_put_name(ctx_, dict, PDF_NAME(V),
                                  field.value.empty() ? "Off" : field.value.c_str());
            } else if (field.kind != FieldKind::kPushButton &&
                       field.kind != FieldKind::kSignature) {
                pdf_dict_put_text_string(ctx_, dict, PDF_NAME(V), field.value.c_str());
                pdf_dict_put_text_string(ctx_, dict, PDF_NAME(DA), kTextAppearance);
            }
            if (!field.options.empty()) {
                pdf_obj* options = pdf_dict_put_array(ctx_, dict, PDF_NAME(Opt),
                                                      static_cast<int>(field.options.size()));
                for (const std::string& option : field.options)
                    pdf_array_push_text_string(ctx_, options, option.c_str());
            }
        });
    }

    // Puts the field under its parent field, or among the form's top fields.
    void Attach(pdf_obj* dict, const std::string& parentName) {
        pdf_obj* form = AcroForm();
        CallMupdf(ctx_, kWhat, [&] {
            pdf_obj* fields = pdf_dict_get(ctx_, form, PDF_NAME(Fields));
            if (parentName.empty()) {
                pdf_array_push(ctx_, fields, dict);
                return;
            }
            pdf_obj* parent = nullptr;
            for (int i = 0; i < pdf_array_len(ctx_, fields) && parent == nullptr; ++i) {
                pdf_obj* candidate = pdf_array_get(ctx_, fields, i);
                const char* name = pdf_dict_get_text_string(ctx_, candidate, PDF_NAME(T));
                if (parentName == name)
                    parent = candidate;
            }
            if (parent == nullptr) {
                parent = pdf_add_new_dict(ctx_, doc_, 2);
                pdf_array_push_drop(ctx_, fields, parent);
                pdf_dict_put_text_string(ctx_, parent, PDF_NAME(T), parentName.c_str());
                pdf_dict_put_array(ctx_, parent, PDF_NAME(Kids), 2);
            }
            pdf_array_push(ctx_, pdf_dict_get(ctx_, parent, PDF_NAME(Kids)), dict);
            pdf_dict_put(ctx_, dict, PDF_NAME(Parent), parent);
        });
    }

    void FillWidget(pdf_obj* widget, const ControlPlacement& control,
                    const FieldDescription& field) {
        const Rect& rect = control.rect;
        ObjPtr on;
        ObjPtr off;
        if (IsButton(field.kind)) {
            on = Square(rect, true);
            off = Square(rect, false);
        }
        const ObjPtr page_obj = document_.PageObject(control.page, kWhat);
        CallMupdf(ctx_, kWhat, [&] {
            pdf_obj* page = page_obj.get();
            pdf_dict_put(ctx_, widget, PDF_NAME(Type), PDF_NAME(Annot));
            pdf_dict_put(ctx_, widget, PDF_NAME(Subtype), PDF_NAME(Widget));
            pdf_dict_put_rect(ctx_, widget, PDF_NAME(Rect),
                              fz_rect{rect.left, rect.bottom, rect.right, rect.top});
            pdf_dict_put_int(ctx_, widget, PDF_NAME(F), kPrintFlag);
            // A reference to the page: through the page index the lookup gives the dictionary.
            const int pageNumber = pdf_is_indirect(ctx_, page) ? pdf_to_num(ctx_, page)
                                                               : pdf_obj_parent_num(ctx_, page);
            pdf_dict_put_drop(ctx_, widget, PDF_NAME(P),
                              pdf_new_indirect(ctx_, doc_, pageNumber, 0));
            if (field.kind == FieldKind::kPushButton) {
                pdf_dict_put(ctx_, pdf_dict_put_dict(ctx_, widget, PDF_NAME(AP), 1), PDF_NAME(N),
                             off.get());
            } else if (on) {
                pdf_obj* normal = pdf_dict_put_dict(
                    ctx_, pdf_dict_put_dict(ctx_, widget, PDF_NAME(AP), 1), PDF_NAME(N), 2);
                pdf_dict_puts(ctx_, normal, control.onState.c_str(), on.get());
                pdf_dict_put(ctx_, normal, PDF_NAME(Off), off.get());
                const bool selected = !field.value.empty() && field.value == control.onState;
                pdf_dict_put_name(ctx_, widget, PDF_NAME(AS),
                                  selected ? control.onState.c_str() : "Off");
            }
            pdf_obj* annots = pdf_dict_get(ctx_, page, PDF_NAME(Annots));
            if (annots == nullptr)
                annots = pdf_dict_put_array(ctx_, page, PDF_NAME(Annots), 4);
            pdf_array_push(ctx_, annots, widget);
        });
    }

    // A form XObject of the control's size: a filled square for "on", a frame for "off".
    ObjPtr Square(const Rect& rect, bool filled) {
        const float width = rect.Width();
        const float height = rect.Height();
        ContentStream drawing;
        if (filled) {
            drawing.FillColor(0, 0, 0);
            drawing.Rectangle({2, 2, width - 2, height - 2}, true);
        } else {
            drawing.StrokeColor(0, 0, 0);
            drawing.Rectangle({0.5f, 0.5f, width - 0.5f, height - 0.5f}, false);
        }
        const std::string& content = drawing.str();
        BufferPtr buffer(ctx_, CallMupdf(ctx_, kWhat, [&] {
                             return fz_new_buffer_from_copied_data(
                                 ctx_, reinterpret_cast<const unsigned char*>(content.data()),
                                 content.size());
                         }));
        ObjPtr dict(ctx_, CallMupdf(ctx_, kWhat, [&] { return pdf_new_dict(ctx_, doc_, 3); }));
        CallMupdf(ctx_, kWhat, [&] {
            pdf_dict_put(ctx_, dict.get(), PDF_NAME(Type), PDF_NAME(XObject));
            pdf_dict_put(ctx_, dict.get(), PDF_NAME(Subtype), PDF_NAME(Form));
            pdf_dict_put_rect(ctx_, dict.get(), PDF_NAME(BBox), fz_rect{0, 0, width, height});
        });
        return ObjPtr(ctx_, CallMupdf(ctx_, kWhat, [&] {
                          return pdf_add_stream(ctx_, doc_, buffer.get(), dict.get(), 0);
                      }));
    }

    Document& document_;
    fz_context* ctx_;
    pdf_document* doc_;
    std::set<int> pagesToDraw_;
};

}  // namespace

void AddFormFields(Document& document, const std::vector<FieldDescription>& fields) {
    FormWriter writer(document);
    for (const FieldDescription& field : fields)
        writer.Add(field);
    writer.DrawTextControls();
    document.MarkChanged();
}

}  // namespace pdfhost::engine
