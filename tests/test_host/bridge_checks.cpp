#include "bridge_checks.h"

#include "util/utf.h"

namespace testhost {
namespace {

constexpr int kOk = 0;
constexpr int kNoJson = 100001;
constexpr const char* kUnknownReply = "{\"data\":null,\"ret\":400000}\n";
constexpr const char* kBadEnvelopeReply = "Error Message Parma";

using Keys = std::vector<std::string>;

std::string Described(const std::optional<std::string>& reply) {
    return reply ? "reply " + *reply : "no single reply";
}

// The fields of a request naming the open document by its file id.
Json::Value FileParams(const std::string& fileId) {
    Json::Value params(Json::objectValue);
    params["file"]["id"] = fileId;
    return params;
}

Json::Value Point(double x, double y) {
    Json::Value point(Json::objectValue);
    point["x"] = x;
    point["y"] = y;
    return point;
}

// The annotations of a page whose /Subtype is `subtype`.
std::vector<NdxObject> AnnotDicts(MemoryEngine& engine, const Page& page,
                                  const std::string& subtype) {
    std::vector<NdxObject> dicts;
    for (const HostAnnot annot : page.annots) {
        const Annotation* found = engine.AnnotOf(annot);
        const PdfObject* type =
            found != nullptr ? engine.Object(engine.Entry(found->dict, "Subtype")) : nullptr;
        if (type != nullptr && type->text == subtype)
            dicts.push_back(found->dict);
    }
    return dicts;
}

std::string TextEntry(MemoryEngine& engine, NdxObject dict, const std::string& key) {
    const PdfObject* value = engine.Object(engine.Entry(dict, key));
    return value != nullptr ? value->text : std::string();
}

bool SameRect(const std::optional<NdxRect>& a, const NdxRect& b) {
    return a && a->left == b.left && a->bottom == b.bottom && a->right == b.right &&
           a->top == b.top;
}

class BridgeRun {
  public:
    BridgeRun(MemoryEngine& engine, PageClient& page, const SampleDocument& sample,
              CheckReport& report)
        : engine_(engine), page_(page), sample_(sample), report_(report) {}

    void Run() {
        CurrentDocument();
        Metadata();
        AiFileId();
        PageCount();
        Search();
        Mark();
        RedactMatch();
        OtherRedactions();
        PointNotes();
        RemoveRedaction();
        Modified();
        Refusals();
    }

  private:
    // Sends a request and requires a reply object with exactly `ret`, `data` and the request's
    // `uuid`, written compactly with one line feed at the end; gives its `data`.
    Json::Value Expect(const std::string& name, const std::string& command,
                       const Json::Value& params, int ret) {
        const std::string id = "req-" + std::to_string(++requests_);
        const std::optional<std::string> text = page_.Request(command, params, id);
        const std::optional<Json::Value> reply = text ? ParseJson(*text) : std::nullopt;
        const bool shaped =
            reply && reply->isObject() && KeysOf(*reply) == Keys{"data", "ret", "uuid"};
        const bool passed = shaped && text->back() == '\n' && (*reply)["ret"].isInt() &&
                            (*reply)["ret"].asInt() == ret && (*reply)["uuid"] == id &&
                            text->find('\n') == text->size() - 1;
        report_.Require(name, passed, Described(text));
        return (*reply)["data"];
    }

    Page& PageAt(int index) {
        return engine_.DocumentOf(sample_.doc)->pages.at(static_cast<std::size_t>(index));
    }

    void CurrentDocument() {
        const Json::Value data = Expect("getCurrentDoc answers ret 0", "getCurrentDoc", {}, kOk);
        const Json::Value& file = data[0];
        const Keys keys{"account_id", "aiFileId",     "drive", "filePath",
                        "id",         "isCurrentDoc", "name",  "size"};
        report_.Require("getCurrentDoc: one file descriptor with its eight keys",
                        data.isArray() && data.size() == 1 && KeysOf(file) == keys, JsonText(data));
        fileId_ = file["id"].asString();
        const std::string path = ToUtf8(sample_.path.wstring());
        report_.Require("getCurrentDoc: the open file's id, name, path and size",
                        fileId_.size() == 38 && fileId_.front() == '{' &&
                            file["name"] == "contract.pdf" && file["filePath"] == path &&
                            file["size"].asUInt64() == sample_.size &&
                            file["isCurrentDoc"] == true && file["aiFileId"] == "",
                        JsonText(file));
        const Json::Value again = Expect("getCurrentDoc again", "getCurrentDoc", {}, kOk);
        report_.Require("getCurrentDoc keeps the file id", again[0]["id"] == fileId_,
                        JsonText(again));
    }

    void Metadata() {
        const Json::Value data =
            Expect("getDocMetadata answers ret 0", "getDocMetadata", FileParams(fileId_), kOk);
        report_.Require("getDocMetadata: the info dictionary's dates",
                        KeysOf(data) == Keys{"CreationDate", "ModDate"} &&
                            data["CreationDate"] == "D:20260102030405Z",
                        JsonText(data));
    }

    void AiFileId() {
        Json::Value params = FileParams(fileId_);
        params["aiFileId"] = "service-file-7";
        const Json::Value data = Expect("setIdToFile answers ret 0", "setIdToFile", params, kOk);
        report_.Require("setIdToFile: data null", data.isNull(), JsonText(data));
        const Json::Value current =
            Expect("getCurrentDoc after setIdToFile", "getCurrentDoc", {}, kOk);
        report_.Require("getCurrentDoc shows the service's id",
                        current[0]["aiFileId"] == "service-file-7", JsonText(current));
    }

    void PageCount() {
        const Json::Value data =
            Expect("getFilePageCount answers ret 0", "getFilePageCount", {}, kOk);
        report_.Require("getFilePageCount: the document's pages",
                        KeysOf(data) == Keys{"pageCount"} && data["pageCount"] == 2,
                        JsonText(data));
    }

    void Search() {
        Json::Value params = FileParams(fileId_);
        for (const char* text : {"Ana Lind", "555-0100", "Orion"}) {
            Json::Value entry(Json::arrayValue);
            entry.append(text);
            entry.append(0);
            params["textList"].append(entry);
        }
        const Json::Value data = Expect("findTextList answers ret 0", "findTextList", params, kOk);
        bool shaped = data.isArray() && data.size() == 3;
        for (Json::ArrayIndex i = 0; shaped && i < data.size(); ++i)
            shaped =
                KeysOf(data[i]) == Keys{"count", "searchKey"} && data[i]["searchKey"].isString();
        report_.Require("findTextList: a count and a search key per text", shaped, JsonText(data));
        report_.Require("findTextList: the matches on both pages",
                        data[0]["count"] == 2 && data[1]["count"] == 1 && data[2]["count"] == 0 &&
                            data[0]["searchKey"] != data[1]["searchKey"],
                        JsonText(data));
        nameKey_ = data[0]["searchKey"].asString();
    }

    // "Ana Lind" stands at characters 17 to 24 of the first line of page 0.
    static constexpr NdxRect kFirstMatch{170, 700, 250, 710};

    Json::Value MatchParams(const std::string& type) const {
        Json::Value params(Json::objectValue);
        params["searchKey"] = nameKey_;
        params["index"] = 0;
        params["type"] = type;
        return params;
    }

    void Mark() {
        Json::Value params = MatchParams("redact");
        Expect("markTexts answers ret 0", "markTexts", params, kOk);
        const Document& document = *engine_.DocumentOf(sample_.doc);
        report_.Require("markTexts selects the match",
                        document.selectedPage == 0 && document.selection.size() == 1 &&
                            SameRect(document.selection[0], kFirstMatch));
    }

    void RedactMatch() {
        Json::Value params = MatchParams("redact");
        params["uniqueIDName"] = "ai_plugin_name_1";
        const Json::Value data = Expect("addAnnot redact answers ret 0", "addAnnot", params, kOk);
        report_.Require("addAnnot: data null", data.isNull(), JsonText(data));
        const std::vector<NdxObject> redacts = AnnotDicts(engine_, PageAt(0), "Redact");
        report_.Require("addAnnot puts a Redact annotation over the match",
                        redacts.size() == 1 &&
                            TextEntry(engine_, redacts[0], "NM") == "ai_plugin_name_1" &&
                            SameRect(engine_.RectOf(redacts[0], "Rect"), kFirstMatch));
        const std::vector<Json::Value> events = page_.TakeEvents();
        report_.Require("the change reaches the page as ev-doc-modified with the file id",
                        events.size() == 1 && events[0]["name"] == "ev-doc-modified" &&
                            events[0]["data"]["id"] == fileId_,
                        events.empty() ? "no event" : JsonText(events[0]));
        const Json::Value again =
            Expect("addAnnot of an annotated match answers ret 0", "addAnnot", params, kOk);
        report_.Require("addAnnot again: the annotation is there already",
                        KeysOf(again) == Keys{"message"} &&
                            again["message"] == "the annot has been added" &&
                            AnnotDicts(engine_, PageAt(0), "Redact").size() == 1,
                        JsonText(again));
    }

    void OtherRedactions() {
        const Json::Value own = Expect("hasOtherRedact answers ret 0", "hasOtherRedact", {}, kOk);
        report_.Require("hasOtherRedact: the plug-in's own mark is no other", own == false,
                        JsonText(own));
        // The user draws a Redact annotation of their own on page 1.
        const NdxObject dict = engine_.NewObject(PdfObject::Kind::kDict);
        const NdxObject subtype = engine_.NewObject(PdfObject::Kind::kName);
        engine_.Object(subtype)->text = "Redact";
        engine_.SetEntry(dict, "Subtype", subtype);
        const HostAnnot users = engine_.AddAnnot(PageAt(1).view, dict);
        const Json::Value other =
            Expect("hasOtherRedact with the user's mark answers ret 0", "hasOtherRedact", {}, kOk);
        report_.Require("hasOtherRedact: the user's mark is another", other == true,
                        JsonText(other));
        engine_.DeleteAnnot(PageAt(1).view, users);
    }

    Json::Value NoteParams(const char* nameKey, const char* name) const {
        Json::Value params = FileParams(fileId_);
        params["pageIndex"] = 0;
        params["point"] = Point(100, 50);
        params["type"] = "note";
        params[nameKey] = name;
        return params;
    }

    void PointNotes() {
        Json::Value add = NoteParams("uniqueIDName", "ai_plugin_pt_1");
        add["contents"] = "Check the signature";
        Expect("addAnnotAtPoint answers ret 0", "addAnnotAtPoint", add, kOk);
        const std::vector<NdxObject> notes = AnnotDicts(engine_, PageAt(0), "Text");
        // The note's top left corner stands at the point, measured from the page's top (792).
        report_.Require(
            "addAnnotAtPoint puts a note and its popup on the page",
            notes.size() == 1 && AnnotDicts(engine_, PageAt(0), "Popup").size() == 1 &&
                SameRect(engine_.RectOf(notes[0], "Rect"), NdxRect{100, 722, 120, 742}));

        const Json::Value listed =
            Expect("getAnnotsContentAtPoint answers ret 0", "getAnnotsContentAtPoint",
                   NoteParams("uniqueIDPrefix", "ai_plugin_pt_"), kOk);
        report_.Require("getAnnotsContentAtPoint lists the note's text and name",
                        listed.isArray() && listed.size() == 1 &&
                            KeysOf(listed[0]) == Keys{"content", "id"} &&
                            listed[0]["content"] == "Check the signature\r\n" &&
                            listed[0]["id"] == "ai_plugin_pt_1",
                        JsonText(listed));

        Expect("removeAnnotsAtPoint answers ret 0", "removeAnnotsAtPoint",
               NoteParams("uniqueIDPrefix", "ai_plugin_pt_"), kOk);
        report_.Require("removeAnnotsAtPoint takes the note away",
                        AnnotDicts(engine_, PageAt(0), "Text").empty());
        const Json::Value none =
            Expect("getAnnotsContentAtPoint after the removal", "getAnnotsContentAtPoint",
                   NoteParams("uniqueIDPrefix", "ai_plugin_pt_"), kOk);
        report_.Require("getAnnotsContentAtPoint: no note any more", none.isNull(), JsonText(none));
    }

    void RemoveRedaction() {
        Json::Value params = MatchParams("redact");
        params["uniqueIDPrefix"] = "ai_plugin_";
        Expect("removeAnnots answers ret 0", "removeAnnots", params, kOk);
        report_.Require("removeAnnots takes the Redact annotation away",
                        AnnotDicts(engine_, PageAt(0), "Redact").empty());
    }

    void Modified() {
        const Json::Value data =
            Expect("isCurrentDocModified answers ret 0", "isCurrentDocModified", {}, kOk);
        report_.Require("isCurrentDocModified: true after the changes", data == true,
                        JsonText(data));
    }

    // The one reply a posted text caused, or how many there were.
    std::string OneReply(const std::string& text) {
        const std::vector<std::string> replies = page_.Exchange(text);
        return replies.size() == 1 ? replies[0]
                                   : "(" + std::to_string(replies.size()) + " replies)";
    }

    void Refusals() {
        const std::optional<std::string> parse =
            page_.Request("findTextList", Json::Value("{not json"), "req-bad-json");
        const std::optional<Json::Value> refused = parse ? ParseJson(*parse) : std::nullopt;
        report_.Require("parameters that are not JSON: ret 100001 with the request's id",
                        refused && (*refused)["ret"] == kNoJson &&
                            (*refused)["uuid"] == "req-bad-json" && (*refused)["data"].isNull(),
                        Described(parse));

        const std::string unknown = OneReply(R"(["base","noSuchCommand",{},"req-unknown"])");
        report_.Require("an unknown command: exactly the unknown-command reply, without id",
                        unknown == kUnknownReply, unknown);
        const std::string module = OneReply(R"(["Base","getCurrentDoc",{},"req-module"])");
        report_.Require("a module other than \"base\": the unknown-command reply",
                        module == kUnknownReply, module);
        const std::string envelope = OneReply(R"(["base","getCurrentDoc",{}])");
        report_.Require("an envelope of three elements: the plain text reply",
                        envelope == kBadEnvelopeReply, envelope);
        const std::vector<std::string> object = page_.Exchange(R"({"module":"base"})");
        report_.Require("a JSON object instead of an array: no reply", object.empty(),
                        object.empty() ? "" : object[0]);
    }

    MemoryEngine& engine_;
    PageClient& page_;
    const SampleDocument& sample_;
    CheckReport& report_;
    int requests_ = 0;
    std::string fileId_;
    std::string nameKey_;
};

}  // namespace

void RunBridgeChecks(MemoryEngine& engine, PageClient& page, const SampleDocument& sample,
                     CheckReport& report) {
    BridgeRun(engine, page, sample, report).Run();
}

}  // namespace testhost
