#include "engine/hidden_text_scrubber.h"

#include <map>
#include <set>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "engine/document_transaction.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/pdf_text_string.h"
#include "engine/strict_stream_reader.h"
#include "engine/xml_text_scrub.h"

namespace pdfhost::engine {
namespace {

constexpr int kMaxDepth = 64;

// String values that are no text, or that readers parse: never cut.
bool IsKeptKey(std::string_view key) {
    static const std::set<std::string_view, std::less<>> kept = {
        "ID",   "O",       "U",         "OE",          "UE",     "Perms",    "DA",
        "DS",   "NM",      "Lang",      "Lookup",      "Panose", "Registry", "Ordering",
        "Cert", "CharSet", "ByteRange", "OverlayText", "Style",  "Reference"};
    return kept.count(key) > 0;
}

// What a text stream holds, as far as scrubbing goes.
enum class StreamKind { kXml, kScript, kFile };

std::string_view NameOf(fz_context* ctx, pdf_obj* name) {
    const char* text = pdf_to_name(ctx, name);
    return text != nullptr ? std::string_view(text) : std::string_view();
}

bool IsSignature(fz_context* ctx, pdf_obj* dict) {
    pdf_obj* type = pdf_dict_get(ctx, dict, PDF_NAME(Type));
    return pdf_name_eq(ctx, type, PDF_NAME(Sig)) || NameOf(ctx, type) == "DocTimeStamp" ||
           pdf_dict_get(ctx, dict, PDF_NAME(ByteRange)) != nullptr;
}

class Scrub {
  public:
    Scrub(Document& document, const RemovedTextMatcher& matcher)
        : document_(document), ctx_(document.fz()), pdf_(document.pdf()), matcher_(matcher) {}

    ScrubCounts Run() {
        const int count =
            CallMupdf(ctx_, "cannot count the objects", [&] { return pdf_xref_len(ctx_, pdf_); });
        pdf_obj* trailer = pdf_trailer(ctx_, pdf_);
        const int encrypt = pdf_to_num(ctx_, pdf_dict_get(ctx_, trailer, PDF_NAME(Encrypt)));
        Walk(trailer, 0, 0);
        for (int num = 1; num < count; ++num) {
            if (num == encrypt)
                continue;
            ObjPtr object = Load(num);
            if (!object)
                continue;
            pdf_obj* obj = object.get();
            if (pdf_is_string(ctx_, obj)) {
                ScrubIndirectString(num, obj);
                continue;
            }
            if (pdf_is_dict(ctx_, obj)) {
                NoteStreamType(num, obj);
                if (pdf_dict_get(ctx_, obj, PDF_NAME(AP)) != nullptr)
                    annotations_.push_back(num);
            }
            Walk(obj, num, 0);
        }
        ScrubStreams();
        if (!droppedFiles_.empty()) {
            for (int num = 1; num < count; ++num) {
                if (ObjPtr object = Load(num))
                    DropReferences(object.get(), 0);
            }
            DropReferences(trailer, 0);
        }
        DropStaleAppearances();
        return counts_;
    }

  private:
    ObjPtr Load(int num) {
        try {
            return ObjPtr(ctx_, CallMupdf(ctx_, "cannot load an object", [&]() -> pdf_obj* {
                              const pdf_xref_entry* entry = pdf_get_xref_entry(ctx_, pdf_, num);
                              if (entry == nullptr || (entry->type != 'n' && entry->type != 'o'))
                                  return nullptr;
                              return pdf_load_object(ctx_, pdf_, num);
                          }));
        } catch (const Error&) {
            return {};  // a damaged object holds nothing that can be read, so nothing to cut
        }
    }

    void NoteStreamType(int num, pdf_obj* dict) {
        if (pdf_obj_num_is_stream(ctx_, pdf_, num) == 0)
            return;
        pdf_obj* type = pdf_dict_get(ctx_, dict, PDF_NAME(Type));
        if (pdf_name_eq(ctx_, type, PDF_NAME(Metadata)))
            streams_[num] = StreamKind::kXml;
        else if (pdf_name_eq(ctx_, type, PDF_NAME(EmbeddedFile)))
            streams_[num] = StreamKind::kFile;
    }

    void NoteReference(pdf_obj* value, StreamKind kind) {
        if (pdf_is_indirect(ctx_, value) && pdf_is_stream(ctx_, value))
            streams_.emplace(pdf_to_num(ctx_, value), kind);
    }

    // Cuts the strings held directly by `obj` (not through references), notes the text
    // streams it names, and for a file specification which file streams it stands for.
    void Walk(pdf_obj* obj, int owner, int depth) {
        if (depth > kMaxDepth || pdf_is_indirect(ctx_, obj))
            return;
        if (pdf_is_array(ctx_, obj)) {
            const int n = pdf_array_len(ctx_, obj);
            for (int i = 0; i < n; ++i) {
                pdf_obj* item = pdf_array_get(ctx_, obj, i);
                if (pdf_is_string(ctx_, item)) {
                    if (std::optional<std::string> cut = CutString(item))
                        Put(owner, [&] { pdf_array_put_drop(ctx_, obj, i, NewString(*cut)); });
                } else {
                    Walk(item, owner, depth + 1);
                }
            }
            return;
        }
        if (!pdf_is_dict(ctx_, obj))
            return;
        const bool signature = IsSignature(ctx_, obj);
        const int n = pdf_dict_len(ctx_, obj);
        for (int i = 0; i < n; ++i) {
            pdf_obj* key = pdf_dict_get_key(ctx_, obj, i);
            pdf_obj* value = pdf_dict_get_val(ctx_, obj, i);
            const std::string_view name = NameOf(ctx_, key);
            // Only the object's own dictionary is a file specification by number; one held
            // directly inside it (in a name tree's array, say) is recognised by its /EF.
            NoteStreamKey(name, value, depth == 0 ? owner : 0);
            if (pdf_is_string(ctx_, value)) {
                if (IsKeptKey(name) || (signature && name == "Contents"))
                    continue;
                if (std::optional<std::string> cut =
                        name == "RC" ? CutXmlString(value) : CutString(value))
                    Put(owner, [&] { pdf_dict_put_drop(ctx_, obj, key, NewString(*cut)); });
            } else if (name != "Encrypt" && name != "ID") {
                Walk(value, owner, depth + 1);
            }
        }
    }

    void NoteStreamKey(std::string_view name, pdf_obj* value, int owner) {
        if (name == "Metadata" || name == "RC") {
            NoteReference(value, StreamKind::kXml);
        } else if (name == "JS") {
            NoteReference(value, StreamKind::kScript);
        } else if (name == "XFA") {
            NoteReference(value, StreamKind::kXml);
            const int n = pdf_array_len(ctx_, value);
            for (int i = 0; i < n; ++i)
                NoteReference(pdf_array_get(ctx_, value, i), StreamKind::kXml);
        } else if (name == "EF" && pdf_is_dict(ctx_, value)) {
            const int n = pdf_dict_len(ctx_, value);
            for (int i = 0; i < n; ++i) {
                pdf_obj* file = pdf_dict_get_val(ctx_, value, i);
                NoteReference(file, StreamKind::kFile);
                if (owner != 0 && pdf_is_indirect(ctx_, file))
                    specsOfFile_[pdf_to_num(ctx_, file)].push_back(owner);
            }
        }
    }

    std::optional<std::string> CutString(pdf_obj* string) {
        const std::string_view bytes(pdf_to_str_buf(ctx_, string), pdf_to_str_len(ctx_, string));
        return ScrubPdfText(bytes, matcher_);
    }

    std::optional<std::string> CutXmlString(pdf_obj* string) {
        const std::string_view bytes(pdf_to_str_buf(ctx_, string), pdf_to_str_len(ctx_, string));
        if (bytes.substr(0, 2) == "\xFE\xFF")
            return CutString(string);  // UTF-16 rich text: cut as plain text
        return ScrubXmlText(bytes, matcher_);
    }

    pdf_obj* NewString(const std::string& bytes) {
        return pdf_new_string(ctx_, bytes.data(), bytes.size());
    }

    template <class Fn>
    void Put(int owner, Fn&& put) {
        CallMupdf(ctx_, "cannot change a string", put);
        ++counts_.strings;
        changed_.insert(owner);
    }

    void ScrubIndirectString(int num, pdf_obj* string) {
        if (std::optional<std::string> cut = CutString(string)) {
            CallMupdf(ctx_, "cannot change a string", [&] {
                pdf_obj* fresh = NewString(*cut);
                fz_try(ctx_) {
                    pdf_update_object(ctx_, pdf_, num, fresh);
                }
                fz_always(ctx_) {
                    pdf_drop_obj(ctx_, fresh);
                }
                fz_catch(ctx_) {
                    fz_rethrow(ctx_);
                }
            });
            ++counts_.strings;
        }
    }

    // The decoded bytes of stream `num`; false when they cannot all be read.
    bool Read(int num, std::string& out) {
        std::optional<std::string> bytes = ReadWholeStream(document_, num);
        if (!bytes)
            return false;
        out = std::move(*bytes);
        return true;
    }

    void Replace(int num, const std::string& bytes) {
        CallMupdf(ctx_, "cannot change a stream", [&] {
            fz_buffer* buffer = fz_new_buffer_from_copied_data(
                ctx_, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
            pdf_obj* ref = nullptr;
            fz_var(ref);
            fz_try(ctx_) {
                ref = pdf_new_indirect(ctx_, pdf_, num, 0);
                pdf_update_stream(ctx_, pdf_, ref, buffer, 0);
                pdf_dict_del(ctx_, ref, PDF_NAME(DecodeParms));
                pdf_dict_del(ctx_, ref, PDF_NAME(Filter));
            }
            fz_always(ctx_) {
                pdf_drop_obj(ctx_, ref);
                fz_drop_buffer(ctx_, buffer);
            }
            fz_catch(ctx_) {
                fz_rethrow(ctx_);
            }
        });
    }

    void ScrubStreams() {
        for (const auto& [num, kind] : streams_) {
            std::string bytes;
            const bool read = Read(num, bytes);
            if (kind == StreamKind::kFile) {
                if (!read || matcher_.OccursInBytes(bytes))
                    DropFile(num);
                continue;
            }
            if (!read) {
                Replace(num, {});  // what cannot be checked goes
                ++counts_.streams;
                continue;
            }
            const std::optional<std::string> cut = kind == StreamKind::kXml
                                                       ? ScrubXmlText(bytes, matcher_)
                                                       : ScrubPdfText(bytes, matcher_);
            if (cut) {
                Replace(num, *cut);
                ++counts_.streams;
            }
        }
    }

    void DropFile(int num) {
        Replace(num, {});
        ++counts_.files;
        droppedFiles_.insert(num);
        const auto specs = specsOfFile_.find(num);
        if (specs != specsOfFile_.end())
            droppedSpecs_.insert(specs->second.begin(), specs->second.end());
    }

    // A file specification of a dropped file: an object noted as one, or a dictionary held
    // directly whose /EF names a dropped file stream.
    bool IsDroppedSpec(pdf_obj* value) const {
        if (pdf_is_indirect(ctx_, value))
            return droppedSpecs_.count(pdf_to_num(ctx_, value)) > 0;
        pdf_obj* files = pdf_dict_get(ctx_, value, PDF_NAME(EF));
        const int n = pdf_dict_len(ctx_, files);
        for (int i = 0; i < n; ++i) {
            pdf_obj* file = pdf_dict_get_val(ctx_, files, i);
            if (pdf_is_indirect(ctx_, file) && droppedFiles_.count(pdf_to_num(ctx_, file)) > 0)
                return true;
        }
        return false;
    }

    // Whether an array element stands for a dropped file: the file specification itself, or
    // an annotation that attaches it.
    bool NamesDroppedFile(pdf_obj* item) const {
        return IsDroppedSpec(item) || IsDroppedSpec(pdf_dict_get(ctx_, item, PDF_NAME(FS)));
    }

    // Takes out of name trees, /AF arrays and /Annots every entry of a dropped file.
    void DropReferences(pdf_obj* obj, int depth) {
        if (depth > kMaxDepth || pdf_is_indirect(ctx_, obj))
            return;
        if (pdf_is_dict(ctx_, obj)) {
            for (int i = pdf_dict_len(ctx_, obj) - 1; i >= 0; --i) {
                pdf_obj* key = pdf_dict_get_key(ctx_, obj, i);
                pdf_obj* value = pdf_dict_get_val(ctx_, obj, i);
                if (IsDroppedSpec(value)) {
                    CallMupdf(ctx_, "cannot drop a file", [&] { pdf_dict_del(ctx_, obj, key); });
                    continue;
                }
                if (pdf_name_eq(ctx_, key, PDF_NAME(Names)) && pdf_is_array(ctx_, value)) {
                    DropNamePairs(value);
                    continue;
                }
                DropReferences(value, depth + 1);
            }
            return;
        }
        if (!pdf_is_array(ctx_, obj))
            return;
        for (int i = pdf_array_len(ctx_, obj) - 1; i >= 0; --i) {
            pdf_obj* item = pdf_array_get(ctx_, obj, i);
            if (NamesDroppedFile(item))
                CallMupdf(ctx_, "cannot drop a file", [&] { pdf_array_delete(ctx_, obj, i); });
            else
                DropReferences(item, depth + 1);
        }
    }

    void DropNamePairs(pdf_obj* names) {
        for (int i = pdf_array_len(ctx_, names) - 1; i >= 1; i -= 2) {
            if (!IsDroppedSpec(pdf_array_get(ctx_, names, i)))
                continue;
            CallMupdf(ctx_, "cannot drop a file", [&] {
                pdf_array_delete(ctx_, names, i);
                pdf_array_delete(ctx_, names, i - 1);
            });
        }
    }

    // Whether the annotation's own strings, or those of a field above it, were cut.
    bool FieldChanged(int num) {
        std::unordered_set<int> visited;
        for (int depth = 0; num > 0 && depth < kMaxDepth && visited.insert(num).second; ++depth) {
            if (changed_.count(num) > 0)
                return true;
            ObjPtr object = Load(num);
            num = object ? pdf_to_num(ctx_, pdf_dict_get(ctx_, object.get(), PDF_NAME(Parent))) : 0;
        }
        return false;
    }

    // Whether any appearance stream of the annotation shows a removed text in its bytes, or
    // cannot be read.
    bool AppearanceShowsRemoved(pdf_obj* ap) {
        std::vector<int> streams;
        const int n = pdf_dict_len(ctx_, ap);
        for (int i = 0; i < n; ++i) {
            pdf_obj* entry = pdf_dict_get_val(ctx_, ap, i);
            if (pdf_is_stream(ctx_, entry)) {
                streams.push_back(pdf_to_num(ctx_, entry));
                continue;
            }
            const int states = pdf_dict_len(ctx_, entry);
            for (int s = 0; s < states; ++s) {
                pdf_obj* state = pdf_dict_get_val(ctx_, entry, s);
                if (pdf_is_stream(ctx_, state))
                    streams.push_back(pdf_to_num(ctx_, state));
            }
        }
        for (const int num : streams) {
            std::string bytes;
            if (!Read(num, bytes) || matcher_.OccursInBytes(bytes))
                return true;
        }
        return false;
    }

    void DropStaleAppearances() {
        bool widgetDropped = false;
        for (const int num : annotations_) {
            ObjPtr object = Load(num);
            if (!object)
                continue;
            pdf_obj* annot = object.get();
            pdf_obj* ap = pdf_dict_get(ctx_, annot, PDF_NAME(AP));
            if (!FieldChanged(num) && !AppearanceShowsRemoved(ap))
                continue;
            CallMupdf(ctx_, "cannot drop an appearance",
                      [&] { pdf_dict_del(ctx_, annot, PDF_NAME(AP)); });
            ++counts_.appearances;
            widgetDropped |= pdf_name_eq(ctx_, pdf_dict_get(ctx_, annot, PDF_NAME(Subtype)),
                                         PDF_NAME(Widget)) != 0;
        }
        if (!widgetDropped)
            return;
        CallMupdf(ctx_, "cannot ask for new appearances", [&] {
            pdf_obj* form =
                pdf_dict_get(ctx_, pdf_dict_get(ctx_, pdf_trailer(ctx_, pdf_), PDF_NAME(Root)),
                             PDF_NAME(AcroForm));
            if (pdf_is_dict(ctx_, form))
                pdf_dict_puts_drop(ctx_, form, "NeedAppearances", PDF_TRUE);
        });
    }

    const Document& document_;
    fz_context* ctx_;
    pdf_document* pdf_;
    const RemovedTextMatcher& matcher_;
    ScrubCounts counts_;
    std::map<int, StreamKind> streams_;
    std::unordered_map<int, std::vector<int>> specsOfFile_;
    std::unordered_set<int> droppedSpecs_;
    std::unordered_set<int> droppedFiles_;
    std::unordered_set<int> changed_;
    std::vector<int> annotations_;
};

}  // namespace

ScrubCounts HiddenTextScrubber::Run() {
    if (matcher_.Empty())
        return {};
    DocumentTransaction transaction(document_, "Remove hidden copies of removed text");
    const ScrubCounts counts = Scrub(document_, matcher_).Run();
    transaction.Commit();
    document_.MarkChanged();
    return counts;
}

}  // namespace pdfhost::engine
