#include "engine/pdf_value.h"

#include <algorithm>

#include "engine/error.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {

PdfValue PdfValue::Boolean(bool value) {
    PdfValue made(Kind::kBoolean);
    made.integer_ = value ? 1 : 0;
    return made;
}

PdfValue PdfValue::Integer(int value) {
    PdfValue made(Kind::kInteger);
    made.integer_ = value;
    return made;
}

PdfValue PdfValue::Real(float value) {
    PdfValue made(Kind::kReal);
    made.real_ = value;
    return made;
}

PdfValue PdfValue::Name(std::string name) {
    PdfValue made(Kind::kName);
    made.text_ = std::move(name);
    return made;
}

PdfValue PdfValue::String(std::string bytes) {
    PdfValue made(Kind::kString);
    made.text_ = std::move(bytes);
    return made;
}

PdfValue PdfValue::Array() {
    return PdfValue(Kind::kArray);
}

PdfValue PdfValue::Dictionary() {
    return PdfValue(Kind::kDictionary);
}

PdfValue PdfValue::Reference(int object, std::uintptr_t document) {
    PdfValue made(Kind::kReference);
    made.integer_ = object;
    made.document_ = document;
    return made;
}

float PdfValue::Number() const {
    if (kind_ == Kind::kInteger)
        return static_cast<float>(integer_);
    return kind_ == Kind::kReal ? real_ : 0.0f;
}

void PdfValue::Push(PdfValue item) {
    if (kind_ == Kind::kArray)
        items_.push_back(std::move(item));
}

void PdfValue::Set(const std::string& key, PdfValue value) {
    if (kind_ != Kind::kDictionary)
        return;
    const auto it = std::find_if(entries_.begin(), entries_.end(),
                                 [&](const Entry& entry) { return entry.first == key; });
    if (it != entries_.end()) {
        it->second = std::move(value);
    } else {
        entries_.emplace_back(key, std::move(value));
    }
}

const PdfValue* PdfValue::Get(const std::string& key) const {
    const auto it = std::find_if(entries_.begin(), entries_.end(),
                                 [&](const Entry& entry) { return entry.first == key; });
    return it != entries_.end() ? &it->second : nullptr;
}

namespace {

// Builds the object bottom-up so that every MuPDF call stands alone in CallMupdf.
ObjPtr Build(fz_context* ctx, pdf_document* doc, std::uintptr_t documentTag,
             const PdfValue& value) {
    using Kind = PdfValue::Kind;
    const char* what = "cannot build a PDF value";
    switch (value.kind()) {
        case Kind::kNull:
            return ObjPtr(ctx, nullptr);
        case Kind::kBoolean:
            return ObjPtr(ctx, value.Boolean() ? PDF_TRUE : PDF_FALSE);
        case Kind::kInteger:
            return ObjPtr(ctx,
                          CallMupdf(ctx, what, [&] { return pdf_new_int(ctx, value.Integer()); }));
        case Kind::kReal:
            return ObjPtr(ctx,
                          CallMupdf(ctx, what, [&] { return pdf_new_real(ctx, value.Number()); }));
        case Kind::kName:
            return ObjPtr(
                ctx, CallMupdf(ctx, what, [&] { return pdf_new_name(ctx, value.Text().c_str()); }));
        case Kind::kString:
            return ObjPtr(ctx, CallMupdf(ctx, what, [&] {
                              return pdf_new_string(ctx, value.Text().data(), value.Text().size());
                          }));
        case Kind::kReference: {
            if (value.ReferencedDocument() != documentTag)
                throw Error("a reference names an object of another document");
            const int count = CallMupdf(ctx, what, [&] { return pdf_xref_len(ctx, doc); });
            if (value.ReferencedObject() <= 0 || value.ReferencedObject() >= count)
                throw Error("a reference names a missing object");
            return ObjPtr(ctx, CallMupdf(ctx, what, [&] {
                              return pdf_new_indirect(ctx, doc, value.ReferencedObject(), 0);
                          }));
        }
        case Kind::kArray: {
            ObjPtr array(ctx, CallMupdf(ctx, what, [&] {
                             return pdf_new_array(ctx, doc, static_cast<int>(value.Items().size()));
                         }));
            for (const PdfValue& item : value.Items()) {
                ObjPtr built = Build(ctx, doc, documentTag, item);
                CallMupdf(ctx, what, [&] {
                    pdf_array_push(ctx, array.get(), built ? built.get() : PDF_NULL);
                });
            }
            return array;
        }
        case Kind::kDictionary: {
            ObjPtr dict(ctx, CallMupdf(ctx, what, [&] {
                            return pdf_new_dict(ctx, doc, static_cast<int>(value.Entries().size()));
                        }));
            for (const auto& item : value.Entries()) {
                ObjPtr built = Build(ctx, doc, documentTag, item.second);
                const char* key = item.first.c_str();
                CallMupdf(ctx, what, [&] {
                    pdf_dict_puts(ctx, dict.get(), key, built ? built.get() : PDF_NULL);
                });
            }
            return dict;
        }
    }
    return ObjPtr(ctx, nullptr);
}

}  // namespace

pdf_obj* NewPdfObject(fz_context* ctx, pdf_document* doc, std::uintptr_t documentTag,
                      const PdfValue& value) {
    return Build(ctx, doc, documentTag, value).release();
}

PdfValue ValueOf(fz_context* ctx, pdf_obj* object, std::uintptr_t documentTag) {
    const char* what = "cannot read a PDF value";
    struct Scalar {
        PdfValue::Kind kind;
        int integer;
        float real;
        int count;
    };
    const Scalar scalar = CallMupdf(ctx, what, [&] {
        if (pdf_is_indirect(ctx, object))
            return Scalar{PdfValue::Kind::kReference, pdf_to_num(ctx, object), 0, 0};
        if (pdf_is_bool(ctx, object))
            return Scalar{PdfValue::Kind::kBoolean, pdf_to_bool(ctx, object), 0, 0};
        if (pdf_is_int(ctx, object))
            return Scalar{PdfValue::Kind::kInteger, pdf_to_int(ctx, object), 0, 0};
        if (pdf_is_real(ctx, object))
            return Scalar{PdfValue::Kind::kReal, 0, pdf_to_real(ctx, object), 0};
        if (pdf_is_name(ctx, object))
            return Scalar{PdfValue::Kind::kName, 0, 0, 0};
        if (pdf_is_string(ctx, object))
            return Scalar{PdfValue::Kind::kString, 0, 0, 0};
        if (pdf_is_array(ctx, object))
            return Scalar{PdfValue::Kind::kArray, 0, 0, pdf_array_len(ctx, object)};
        if (pdf_is_dict(ctx, object))
            return Scalar{PdfValue::Kind::kDictionary, 0, 0, pdf_dict_len(ctx, object)};
        return Scalar{PdfValue::Kind::kNull, 0, 0, 0};
    });
    switch (scalar.kind) {
        case PdfValue::Kind::kReference:
            return PdfValue::Reference(scalar.integer, documentTag);
        case PdfValue::Kind::kBoolean:
            return PdfValue::Boolean(scalar.integer != 0);
        case PdfValue::Kind::kInteger:
            return PdfValue::Integer(scalar.integer);
        case PdfValue::Kind::kReal:
            return PdfValue::Real(scalar.real);
        case PdfValue::Kind::kName:
            return PdfValue::Name(CallMupdf(ctx, what, [&] { return pdf_to_name(ctx, object); }));
        case PdfValue::Kind::kString: {
            struct Bytes {
                const char* data;
                std::size_t size;
            };
            const Bytes bytes = CallMupdf(ctx, what, [&] {
                return Bytes{pdf_to_str_buf(ctx, object), pdf_to_str_len(ctx, object)};
            });
            return PdfValue::String(std::string(bytes.data, bytes.size));
        }
        case PdfValue::Kind::kArray: {
            PdfValue array = PdfValue::Array();
            for (int i = 0; i < scalar.count; ++i) {
                pdf_obj* item = CallMupdf(ctx, what, [&] { return pdf_array_get(ctx, object, i); });
                array.Push(ValueOf(ctx, item, documentTag));
            }
            return array;
        }
        case PdfValue::Kind::kDictionary: {
            PdfValue dict = PdfValue::Dictionary();
            for (int i = 0; i < scalar.count; ++i) {
                const char* key = CallMupdf(
                    ctx, what, [&] { return pdf_to_name(ctx, pdf_dict_get_key(ctx, object, i)); });
                pdf_obj* entry =
                    CallMupdf(ctx, what, [&] { return pdf_dict_get_val(ctx, object, i); });
                dict.Set(key, ValueOf(ctx, entry, documentTag));
            }
            return dict;
        }
        case PdfValue::Kind::kNull:
            break;
    }
    return PdfValue();
}

}  // namespace pdfhost::engine
