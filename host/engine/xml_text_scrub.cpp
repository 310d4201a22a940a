#include "engine/xml_text_scrub.h"

#include "engine/pdf_text_string.h"

namespace pdfhost::engine {
namespace {

// Splits XML into markup, which is kept, and values, which are scrubbed.
class XmlSplitter {
  public:
    XmlSplitter(std::string_view xml, const RemovedTextMatcher& matcher)
        : xml_(xml), matcher_(matcher) {}

    std::optional<std::string> Run() {
        std::size_t at = 0;
        while (at < xml_.size()) {
            if (xml_[at] != '<') {
                const std::size_t end = Until(at, "<");
                Value(at, end);
                at = end;
            } else if (xml_.compare(at, 4, "<!--") == 0) {
                at = Wrapped(at, 4, "-->");
            } else if (xml_.compare(at, 9, "<![CDATA[") == 0) {
                at = Wrapped(at, 9, "]]>");
            } else {
                at = Tag(at);
            }
        }
        if (!changed_)
            return std::nullopt;
        return std::move(out_);
    }

  private:
    std::size_t Until(std::size_t from, std::string_view token) const {
        const std::size_t found = xml_.find(token, from);
        return found == std::string_view::npos ? xml_.size() : found;
    }

    void Markup(std::size_t from, std::size_t to) { out_.append(xml_.substr(from, to - from)); }

    void Value(std::size_t from, std::size_t to) {
        const std::string_view value = xml_.substr(from, to - from);
        if (std::optional<std::string> scrubbed = ScrubUtf8Text(value, matcher_)) {
            out_.append(*scrubbed);
            changed_ = true;
        } else {
            out_.append(value);
        }
    }

    // A comment or CDATA section: its opening, its content as a value, its closing.
    std::size_t Wrapped(std::size_t at, std::size_t openLength, std::string_view close) {
        Markup(at, at + openLength);
        const std::size_t end = Until(at + openLength, close);
        Value(at + openLength, end);
        const std::size_t after = std::min(xml_.size(), end + close.size());
        Markup(end, after);
        return after;
    }

    // A tag or processing instruction: attribute values in quotes are values.
    std::size_t Tag(std::size_t at) {
        std::size_t pos = at;
        while (pos < xml_.size() && xml_[pos] != '>') {
            const char quote = xml_[pos];
            if (quote != '"' && quote != '\'') {
                ++pos;
                continue;
            }
            Markup(at, pos + 1);
            const std::size_t end = Until(pos + 1, std::string_view(&quote, 1));
            Value(pos + 1, end);
            at = end;
            pos = end + 1;
        }
        const std::size_t after = std::min(xml_.size(), pos + 1);
        Markup(at, after);
        return after;
    }

    std::string_view xml_;
    const RemovedTextMatcher& matcher_;
    std::string out_;
    bool changed_ = false;
};

}  // namespace

std::optional<std::string> ScrubXmlText(std::string_view xml, const RemovedTextMatcher& matcher) {
    return XmlSplitter(xml, matcher).Run();
}

}  // namespace pdfhost::engine
