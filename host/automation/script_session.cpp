#include "automation/script_session.h"

#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include <json/reader.h>

#include "automation/account_lines.h"
#include "automation/field_typing.h"
#include "automation/ribbon_press.h"
#include "automation/user_redaction.h"
#include "automation/view_state.h"
#include "host_app.h"
#include "json_depth.h"

namespace pdfhost {
namespace {

bool ParseObject(const std::string& text, Json::Value& value, std::string& error) {
    if (!JsonDepthWithin(text)) {
        error = "nested deeper than " + std::to_string(kMaxJsonDepth) + " levels";
        return false;
    }
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    if (!reader->parse(text.data(), text.data() + text.size(), &value, &error))
        return false;
    if (!value.isObject()) {
        error = "expected a JSON object";
        return false;
    }
    return true;
}

// jsoncpp's report, first error only, on one line: "Line 1, Column 2: Syntax error: ...".
std::string FirstError(const std::string& report) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (start < report.size() && parts.size() < 2) {
        std::size_t end = report.find('\n', start);
        if (end == std::string::npos)
            end = report.size();
        std::string part = report.substr(start, end - start);
        const std::size_t text = part.find_first_not_of("* ");
        if (text != std::string::npos)
            parts.push_back(part.substr(text));
        start = end + 1;
    }
    if (parts.empty())
        return "not JSON";
    return parts.size() == 1 ? parts[0] : parts[0] + ": " + parts[1];
}

bool IsBlank(const std::string& line) {
    return line.find_first_not_of(" \t\r\n") == std::string::npos;
}

}  // namespace

ScriptSession::ScriptSession(HostApp& app, std::ostream& out, bool pageChannel)
    : app_(app), out_(out), channel_(out_) {
    if (pageChannel)
        channel_.Publish();
    app_.SetScriptWriter(&out_);
}

ScriptSession::~ScriptSession() {
    if (app_.ScriptWriter() == &out_)
        app_.SetScriptWriter(nullptr);
    channel_.Unpublish();
}

void ScriptSession::Run(std::istream& in) {
    std::string line;
    while (std::getline(in, line)) {
        if (HandleLine(line) == Outcome::kQuit)
            return;
    }
    app_.UnloadPlugins();
}

ScriptSession::Outcome ScriptSession::HandleLine(const std::string& text) {
    if (IsBlank(text))
        return Outcome::kContinue;
    Json::Value line;
    std::string error;
    if (!ParseObject(text, line, error)) {
        Error("malformed line: " + FirstError(error));
        return Outcome::kContinue;
    }
    if (line.isMember("post")) {
        if (!line["post"].isString()) {
            Error("\"post\" needs a string");
            return Outcome::kContinue;
        }
        channel_.Post(QString::fromStdString(line["post"].asString()));
        return Outcome::kContinue;
    }
    if (line.isMember("host"))
        return HandleHost(line);
    Error("a line needs \"post\" or \"host\"");
    return Outcome::kContinue;
}

ScriptSession::Outcome ScriptSession::HandleHost(const Json::Value& line) {
    if (!line["host"].isString()) {
        Error("\"host\" needs a string");
        return Outcome::kContinue;
    }
    const std::string command = line["host"].asString();
    if (command == "quit") {
        app_.UnloadPlugins();
        return Outcome::kQuit;
    }
    if (command == "open") {
        if (line["path"].isString()) {
            OpenFile(line["path"].asString());
        } else {
            Error("\"open\" needs a \"path\" string");
        }
    } else if (command == "new") {
        New();
    } else if (command == "activate") {
        if (HostDocument* document = DocumentOf(line))
            app_.Activate(*document);
    } else if (command == "startPage") {
        app_.ActivateOtherTab();
    } else if (command == "close") {
        if (HostDocument* document = DocumentOf(line))
            app_.CloseDocument(*document);
    } else if (command == "save") {
        Save(line);
    } else if (command == "wait") {
        Wait(line);
    } else if (command == "state") {
        State();
    } else if (command == "setField") {
        if (HostDocument* document = DocumentOf(line)) {
            if (const std::string error = TypeIntoField(app_, *document, line); !error.empty())
                Error(error);
        }
    } else if (command == "userRedact") {
        if (HostDocument* document = DocumentOf(line)) {
            if (const std::string error = DrawUserRedaction(app_, *document, line); !error.empty())
                Error(error);
        }
    } else if (command == "ribbon") {
        if (const std::string error = PressRibbonEntry(app_, line); !error.empty())
            Error(error);
    } else if (command == "answer") {
        if (!line["dialog"].isString() || line["dialog"].asString().empty()) {
            Error("\"answer\" needs a \"dialog\" kind");
        } else if (!line.isMember("value")) {
            Error("\"answer\" needs a \"value\"");
        } else {
            app_.Answers().Queue(line["dialog"].asString(), line["value"]);
        }
    } else if (command == "signIn" || command == "signOut") {
        if (const std::string error = ChangeAccount(app_, line); !error.empty())
            Error(error);
    } else {
        Error("unknown host command: " + command);
    }
    return Outcome::kContinue;
}

void ScriptSession::OpenFile(const std::string& path) {
    const HostApp::OpenResult result = app_.OpenDocument(path);
    if (result.document == nullptr) {
        Error(result.error);
        return;
    }
    Opened(*result.document);
}

void ScriptSession::New() {
    try {
        Opened(app_.NewDocument());
    } catch (const std::exception& error) {
        Error(std::string("cannot make a new document: ") + error.what());
    }
}

void ScriptSession::Opened(const HostDocument& document) {
    Json::Value answer(Json::objectValue);
    answer["opened"] = document.Number();
    answer["path"] = document.Path();
    out_.Write(answer);
}

HostDocument* ScriptSession::DocumentOf(const Json::Value& line) {
    if (!line["doc"].isInt()) {
        std::string text = line["host"].asString();
        text.insert(0, 1, '"').append("\" needs a \"doc\" number");
        Error(text);
        return nullptr;
    }
    const int number = line["doc"].asInt();
    HostDocument* document = app_.Documents().FindByNumber(number);
    if (document == nullptr || document->IsHidden()) {
        Error("no document " + std::to_string(number));
        return nullptr;
    }
    return document;
}

void ScriptSession::Save(const Json::Value& line) {
    HostDocument* document = DocumentOf(line);
    if (document == nullptr)
        return;
    const int number = document->Number();
    if (app_.SaveDocument(*document) == 0)
        Error("cannot save document " + std::to_string(number));
}

void ScriptSession::Wait(const Json::Value& line) {
    if (!line["ms"].isInt() || line["ms"].asInt() < 0) {
        Error("\"wait\" needs a non-negative \"ms\" number");
        return;
    }
    QEventLoop loop;
    QTimer::singleShot(line["ms"].asInt(), &loop, &QEventLoop::quit);
    loop.exec();
}

void ScriptSession::State() {
    Json::Value documents(Json::arrayValue);
    for (const HostDocument* document : app_.Documents().Tabs()) {
        Json::Value entry(Json::objectValue);
        entry["number"] = document->Number();
        entry["path"] = document->Path();
        entry["modified"] = document->IsModified();
        entry["active"] = document == app_.Documents().Active();
        if (const DocView* view = document->View())
            DescribeView(*view, entry);
        documents.append(entry);
    }
    Json::Value state(Json::objectValue);
    state["documents"] = documents;
    state["paneShown"] = app_.AnyPaneShown();
    state["tool"] = app_.Tools().CurrentName();
    Json::Value answer(Json::objectValue);
    answer["state"] = state;
    out_.Write(answer);
}

void ScriptSession::Error(const std::string& text) {
    Json::Value answer(Json::objectValue);
    answer["error"] = text;
    out_.Write(answer);
}

}  // namespace pdfhost
