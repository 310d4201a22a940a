// The page's messages against the plug-in on the unit tests' fake host. The first byte picks
// the form: a raw message as the page posts it, or a command of the table with the rest of the
// input as its parameter text (the second byte picks the command).
#include <cstddef>
#include <cstdint>
#include <string>

#include "attached_plugin.h"
#include "bridge/web_message_channel.h"
#include "fake_host.h"
#include "logging/async_logger.h"

namespace {

constexpr const char* kCommands[] = {
    "getCurrentDoc",
    "getDocMetadata",
    "isCurrentDocModified",
    "getFilePageCount",
    "checkFilePermission",
    "findTexts",
    "findTextList",
    "markTexts",
    "clearMarkTexts",
    "addAnnot",
    "removeAnnots",
    "addAnnotAtPoint",
    "getAnnotsContentAtPoint",
    "removeAnnotsAtPoint",
    "redactApply",
    "replaceText",
    "getAllFormFields",
    "setFormFieldValue",
    "getFileTexts",
    "getFileStream",
    "releaseFileStream",
    "saveDocument",
    "closeCurrentFile",
    "openFile",
    "setIdToFile",
    "showProgressBar",
    "hasOtherRedact",
    "getUserJWT",
    "runFileOCR",
    "openUrl",
    "showFileSelectDialog",
    "startBatchRedaction",
    "openNextFileForBatch",
    "endBatchRedaction",
};

class NullEndpoint : public PageEndpoint {
  public:
    void PostWebMessageAsString(const std::wstring&) override {}
    void ExecuteScript(const std::wstring&) override {}
};

// One plug-in for the whole run, on a document of two pages with text.
struct Session {
    Session() {
        FakeDoc doc;
        doc.path = L"/fuzz/a.pdf";
        doc.pages.resize(2);
        host.Open(doc);
        plugin.app.ImportTables();
        plugin.app.Init();
    }
    FakeHost host;
    AttachedPlugin plugin{host};
    NullEndpoint endpoint;
    WebMessageChannel channel{plugin.app.commands(), endpoint};
};

std::string Quoted(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            out += '\\';
        if (static_cast<unsigned char>(c) >= 0x20)
            out += c;
    }
    return out + '"';
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static Session* session = [] {
        AsyncLogger::Instance().Discard();
        return new Session();
    }();
    if (size < 2)
        return 0;
    const std::string_view rest(reinterpret_cast<const char*>(data + 2), size - 2);
    if (data[0] % 2 == 0) {
        session->channel.OnWebMessage(rest);
        return 0;
    }
    const char* command = kCommands[data[1] % (sizeof(kCommands) / sizeof(kCommands[0]))];
    // Parameters as an object where the input is one, else as text.
    const bool object = !rest.empty() && rest.front() == '{';
    const std::string params = object ? std::string(rest) : Quoted(rest);
    session->channel.OnWebMessage(R"(["base",")" + std::string(command) + "\"," + params +
                                  ",\"f\"]");
    return 0;
}
