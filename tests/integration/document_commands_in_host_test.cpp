// The document commands against real PDF files in pdfhost, through the page channel of its
// scripted mode, byte for byte where the page sees bytes.
#include "engine/permissions.h"
#include "plugin_host_fixture.h"

namespace {

using pdfhost::engine::Encryption;
using pdfhost::engine::PageDescription;
using pdfhost::engine::PdfDescription;
namespace perm = pdfhost::engine::permission;

PdfDescription TextPdf(int pages = 2) {
    PdfDescription recipe;
    for (int i = 0; i < pages; ++i) {
        recipe.pages.push_back(PageDescription::TextLines({"Jane Roe", "jane.roe@example.com"}));
    }
    return recipe;
}

class DocumentCommandsInHostTest : public PluginHostTest {
  protected:
    void SetUp() override { Start(); }
    std::string CurrentId() { return Call("getCurrentDoc")["data"][0]["id"].asString(); }
    // Posts a "base" command for the current document; "{id}" in `params` stands for its id.
    std::string Reply(const std::string& command, std::string params = "{}") {
        if (const auto at = params.find("{id}"); at != std::string::npos)
            params.replace(at, 4, CurrentId());
        const auto replies = Post(R"(["base",")" + command + R"(",)" + params + R"(,"c"])");
        return replies.size() == 1 ? replies[0] : "";
    }
};

// Each kind of file gives the page exactly these replies.
TEST_F(DocumentCommandsInHostTest, RepliesOfEachKindOfFile) {
    PdfDescription dated = TextPdf(3);
    dated.info = {{"CreationDate", "D:20240102030405+01'00'"}, {"ModDate", "D:20250607080910Z"}};
    PdfDescription noCopy = TextPdf(1);
    noCopy.encryption = Encryption{pdfhost::engine::EncryptionMethod::kAes128, "", "owner-secret",
                                   perm::kPrint | perm::kAnnotate | perm::kModify};
    // Copying and annotating allowed, modifying not: a redaction could not be applied.
    PdfDescription noModify = noCopy;
    noModify.encryption->permissions = perm::kPrint | perm::kCopy | perm::kAnnotate;
    const PdfDescription scan{{PageDescription::ImageOnly(1), PageDescription::ImageOnly(2)}};
    const PdfDescription mixed{{PageDescription::ImageOnly(), PageDescription::TextLines({"x"})}};
    const PdfDescription blank{{PageDescription::Blank(), PageDescription::TextLines({"x"})}};
    const PdfDescription form{{PageDescription::ImageOnly(), PageDescription::FormOnly()}};
    const auto data = [](const std::string& json) {
        return "{\"data\":" + json + ",\"ret\":0,\"uuid\":\"c\"}\n";
    };
    const auto refused = [](const std::string& reason) {
        return "{\"data\":{\"reason\":\"" + reason + "\"},\"ret\":400027,\"uuid\":\"c\"}\n";
    };
    const struct {
        PdfDescription recipe;
        const char* command;
        const char* params;
        std::string reply;
    } cases[] = {
        {dated, "getFilePageCount", "{}", data("{\"pageCount\":3}")},
        {dated, "isCurrentDocModified", "\"not json\"", data("false")},
        {dated, "getDocMetadata", R"({"file":{"id":"{id}"}})",
         data("{\"CreationDate\":\"D:20240102030405+01'00'\",\"ModDate\":\"D:20250607080910Z\"}")},
        {TextPdf(1), "getDocMetadata", R"({"file":{"id":"{id}"}})",
         "{\"data\":null,\"ret\":400008,\"uuid\":\"c\"}\n"},
        {TextPdf(1), "getDocMetadata", "\"{{\"", "{\"data\":null,\"ret\":100001,\"uuid\":\"c\"}\n"},
        {noCopy, "checkFilePermission", "{}",
         refused("Document content is not allowed to be copied")},
        {noModify, "checkFilePermission", "{}", refused("Annot is not allowed to be modified")},
        {TextPdf(1), "checkFilePermission", "{}", data("null")},
        {TextPdf(), "getFileImagesType", "{}", data("{\"type\":0}")},
        {scan, "getFileImagesType", "{}", data("{\"type\":1}")},
        {mixed, "getFileImagesType", "{}", data("{\"type\":2}")},
        {blank, "getFileImagesType", "{}", data("{\"type\":0}")},
        {form, "getFileImagesType", "{}", data("{\"type\":2}")},
    };
    int n = 0;
    for (const auto& c : cases) {
        ASSERT_GT(Open(MakePdf("f" + std::to_string(n++) + ".pdf", c.recipe)), 0);
        EXPECT_EQ(Reply(c.command, c.params), c.reply) << c.command << " of file " << n;
    }
    host->MarkModified(*host->Documents().Active());
    EXPECT_EQ(Reply("isCurrentDocModified"), data("true"));
}

}  // namespace
