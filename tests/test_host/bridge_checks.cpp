#include "bridge_checks.h"

#include <cstring>

#include "util/utf.h"

namespace testhost {
namespace {

constexpr int kNoJson = 100001;
// "Ana Lind" stands at characters 17 to 24 of the first line of page 0.
constexpr NdxRect kFirstMatch{170, 700, 250, 710};
constexpr const char* kFirstMatchRect = "/Rect [170 700 250 710]";

using Keys = std::vector<std::string>;

std::string Described(const std::optional<std::string>& reply) {
    return reply ? "reply " + *reply : "no single reply";
}

// The names of the objects' members, sorted (jsoncpp keeps members in key order).
Keys KeysOf(const Json::Value& object) {
    return object.isObject() ? object.getMemberNames() : Keys{};
}

bool SameRect(const NdxRect& a, const NdxRect& b) {
    return a.left == b.left && a.bottom == b.bottom && a.right == b.right && a.top == b.top;
}

class BridgeRun {
  public:
    BridgeRun(ConsoleHost& host, const SampleDocument& sample, CheckReport& report)
        : host_(host), sample_(sample), report_(report) {}

    void Run() {
        CurrentDocument();
        SearchAndMark();
        RedactMatch();
        BadParameters();
    }

  private:
    // The parameters of a JSON text in which $FILE stands for the file id and $KEY for the
    // search key of "Ana Lind".
    Json::Value Params(std::string text) const {
        for (const auto& [name, value] :
             {std::pair{"$FILE", fileId_}, std::pair{"$KEY", nameKey_}}) {
            for (std::size_t at = text.find(name); at != std::string::npos;
                 at = text.find(name, at + value.size()))
                text.replace(at, std::strlen(name), value);
        }
        return ParseJson(text).value();
    }

    // Posts the request of module "base" and gives its one reply text; nothing when there was
    // not exactly one.
    std::optional<std::string> Request(const std::string& command, const Json::Value& params,
                                       const std::string& id) {
        Json::Value request(Json::arrayValue);
        for (const Json::Value& item :
             {Json::Value("base"), Json::Value(command), params, Json::Value(id)})
            request.append(item);
        const std::vector<std::string> replies = host_.Exchange(JsonText(request));
        return replies.size() == 1 ? std::optional(replies[0]) : std::nullopt;
    }

    // Sends a request and requires a reply object with exactly `ret` 0, `data` and the request's
    // `uuid`, written compactly with one line feed at the end; gives its `data`.
    Json::Value Expect(const std::string& name, const std::string& command,
                       const std::string& params = "null") {
        const std::string id = "req-" + std::to_string(++requests_);
        const std::optional<std::string> text = Request(command, Params(params), id);
        const std::optional<Json::Value> reply = text ? ParseJson(*text) : std::nullopt;
        const bool passed = reply && KeysOf(*reply) == Keys{"data", "ret", "uuid"} &&
                            (*reply)["ret"].isInt() && (*reply)["ret"].asInt() == 0 &&
                            (*reply)["uuid"] == id && text->find('\n') == text->size() - 1;
        report_.Require(name, passed, Described(text));
        return (*reply)["data"];
    }

    // Requires `passed`, the detail being the JSON text of `value`.
    void Require(const std::string& name, bool passed, const Json::Value& value) {
        report_.Require(name, passed, JsonText(value));
    }

    void CurrentDocument() {
        const Json::Value data = Expect("getCurrentDoc answers ret 0", "getCurrentDoc");
        const Json::Value& file = data[0];
        const Keys keys{"account_id", "aiFileId",     "drive", "filePath",
                        "id",         "isCurrentDoc", "name",  "size"};
        Require("getCurrentDoc: one file descriptor with its eight keys",
                data.isArray() && data.size() == 1 && KeysOf(file) == keys, data);
        fileId_ = file["id"].asString();
        Require("getCurrentDoc: the open file's id, name, path and size",
                fileId_.size() == 38 && fileId_.front() == '{' && file["name"] == "contract.pdf" &&
                    file["filePath"] == ToUtf8(sample_.path.wstring()) &&
                    file["size"].asUInt64() == sample_.size && file["isCurrentDoc"] == true &&
                    file["aiFileId"] == "",
                file);
    }

    void SearchAndMark() {
        const Json::Value data = Expect(
            "findTextList answers ret 0", "findTextList",
            R"({"file":{"id":"$FILE"},"textList":[["Ana Lind",0],["555-0100",0],["Orion",0]]})");
        bool shaped = data.isArray() && data.size() == 3;
        for (Json::ArrayIndex i = 0; shaped && i < data.size(); ++i)
            shaped =
                KeysOf(data[i]) == Keys{"count", "searchKey"} && data[i]["searchKey"].isString();
        Require("findTextList: a count and a search key per text", shaped, data);
        Require("findTextList: the matches on both pages",
                data[0]["count"] == 2 && data[1]["count"] == 1 && data[2]["count"] == 0 &&
                    data[0]["searchKey"] != data[1]["searchKey"],
                data);
        nameKey_ = data[0]["searchKey"].asString();

        Expect("markTexts answers ret 0", "markTexts",
               R"({"searchKey":"$KEY","index":0,"type":"redact"})");
        const std::optional<FakeSelection>& chosen = host_.selection;
        report_.Require("markTexts selects the match", chosen && chosen->page == 0 &&
                                                           chosen->rects.size() == 1 &&
                                                           SameRect(chosen->rects[0], kFirstMatch));
    }

    void RedactMatch() {
        const char* params =
            R"({"searchKey":"$KEY","index":0,"type":"redact","uniqueIDName":"ai_plugin_name_1"})";
        const Json::Value data = Expect("addAnnot redact answers ret 0", "addAnnot", params);
        Require("addAnnot: data null", data.isNull(), data);
        const auto& annots = host_.Page(sample_.doc, 0).annots;
        const std::string redact = annots.size() == 1 ? Describe(*annots[0]->dict) : "none";
        bool described = true;
        for (const char* entry : {"/Subtype /Redact", "/NM (ai_plugin_name_1)", kFirstMatchRect})
            described = described && redact.find(entry) != std::string::npos;
        report_.Require("addAnnot puts a Redact annotation over the match", described, redact);
        const std::vector<Json::Value> events = host_.TakeEvents();
        report_.Require("the change reaches the page as ev-doc-modified with the file id",
                        events.size() == 1 && events[0]["name"] == "ev-doc-modified" &&
                            events[0]["data"]["id"] == fileId_,
                        events.empty() ? "no event" : JsonText(events[0]));
    }

    void BadParameters() {
        const std::optional<std::string> parse =
            Request("findTextList", Json::Value("{not json"), "req-bad-json");
        const std::optional<Json::Value> refused = parse ? ParseJson(*parse) : std::nullopt;
        report_.Require("parameters that are not JSON: ret 100001 with the request's id",
                        refused && (*refused)["ret"] == kNoJson &&
                            (*refused)["uuid"] == "req-bad-json" && (*refused)["data"].isNull(),
                        Described(parse));
    }

    ConsoleHost& host_;
    const SampleDocument& sample_;
    CheckReport& report_;
    int requests_ = 0;
    std::string fileId_;
    std::string nameKey_;
};

}  // namespace

void RunBridgeChecks(ConsoleHost& host, const SampleDocument& sample, CheckReport& report) {
    BridgeRun(host, sample, report).Run();
}

}  // namespace testhost
