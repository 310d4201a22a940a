#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

struct fz_context;
struct pdf_document;
struct pdf_obj;

namespace pdfhost::engine {

// A PDF value built outside any document, as a plug-in builds an annotation dictionary before it
// hands it to a page. Values are plain C++ data (copied, compared); a reference names an object
// by number in the document identified by `document`, a tag chosen by the caller.
class PdfValue {
  public:
    enum class Kind {
        kNull,
        kBoolean,
        kInteger,
        kReal,
        kName,
        kString,
        kArray,
        kDictionary,
        kReference
    };
    using Entry = std::pair<std::string, PdfValue>;

    PdfValue() = default;
    static PdfValue Boolean(bool value);
    static PdfValue Integer(int value);
    static PdfValue Real(float value);
    static PdfValue Name(std::string name);
    // Raw string bytes (PDFDocEncoding or UTF-16BE with its byte order mark, as written).
    static PdfValue String(std::string bytes);
    static PdfValue Array();
    static PdfValue Dictionary();
    static PdfValue Reference(int object, std::uintptr_t document);

    Kind kind() const { return kind_; }
    bool IsNumber() const { return kind_ == Kind::kInteger || kind_ == Kind::kReal; }
    // Numbers (integers widened), 0 for anything else.
    float Number() const;
    int Integer() const { return kind_ == Kind::kInteger ? integer_ : 0; }
    bool Boolean() const { return kind_ == Kind::kBoolean && integer_ != 0; }
    // The name or the string bytes; empty for anything else.
    const std::string& Text() const { return text_; }
    int ReferencedObject() const { return kind_ == Kind::kReference ? integer_ : 0; }
    std::uintptr_t ReferencedDocument() const { return document_; }

    // Arrays; ignored or empty for other kinds.
    void Push(PdfValue item);
    const std::vector<PdfValue>& Items() const { return items_; }

    // Dictionaries: keys keep the order in which they were first set; setting a key again
    // replaces its value in place. Ignored or empty for other kinds.
    void Set(const std::string& key, PdfValue value);
    // The value of `key`, or null when the dictionary has none.
    const PdfValue* Get(const std::string& key) const;
    const std::vector<Entry>& Entries() const { return entries_; }

    friend bool operator==(const PdfValue&, const PdfValue&) = default;

  private:
    explicit PdfValue(Kind kind) : kind_(kind) {}

    Kind kind_ = Kind::kNull;
    int integer_ = 0;
    float real_ = 0;
    std::uintptr_t document_ = 0;
    std::string text_;
    std::vector<PdfValue> items_;
    std::vector<Entry> entries_;
};

// A new MuPDF object of `doc` holding `value` (the caller drops it). References must carry
// `documentTag`; one that names another document or a missing object throws Error.
pdf_obj* NewPdfObject(fz_context* ctx, pdf_document* doc, std::uintptr_t documentTag,
                      const PdfValue& value);

// The value of a MuPDF object; indirect references stay references (tagged `documentTag`).
// Streams are taken as their dictionaries.
PdfValue ValueOf(fz_context* ctx, pdf_obj* object, std::uintptr_t documentTag);

}  // namespace pdfhost::engine
