#include "automation/script_session.h"

#include <QEventLoop>
#include <QTimer>
#include <set>

#include "automation/account_lines.h"
#include "automation/field_typing.h"
#include "automation/ribbon_press.h"
#include "automation/script_line.h"
#include "automation/user_redaction.h"
#include "automation/view_state.h"
#include "host_app.h"

namespace pdfhost {

namespace {

// The lines that stand for the user's work in the main window, which a modal dialog blocks.
bool NeedsMainWindow(const std::string& command) {
    static const std::set<std::string> kCommands = {"open",       "new",      "activate",
                                                    "startPage",  "close",    "save",
                                                    "userRedact", "setField", "ribbon"};
    return kCommands.contains(command);
}

}  // namespace

ScriptSession::ScriptSession(HostApp& app, std::ostream& out, bool pageChannel)
    : app_(app),
      out_(out),
      channel_(out_),
      batchChannel_(out_, AutomationChannel::kBatchPropertyName),
      batchAnswers_(app),
      batchPage_(
          out_, [this] { return NextLine(); },
          [this](const std::string& line) { return HandleLine(line) == Outcome::kQuit; }) {
    if (pageChannel) {
        channel_.Publish();
        batchChannel_.Publish();
    }
    app_.SetScriptWriter(&out_);
}

ScriptSession::~ScriptSession() {
    if (app_.ScriptWriter() == &out_)
        app_.SetScriptWriter(nullptr);
    channel_.Unpublish();
    batchChannel_.Unpublish();
}

void ScriptSession::Run(std::istream& in) {
    in_ = &in;
    while (const std::optional<std::string> line = NextLine()) {
        if (HandleLine(*line) == Outcome::kQuit) {
            in_ = nullptr;
            return;
        }
        // A quit read inside the batch page's run ends the run once the batch line is done.
        if (batchPage_.TakeQuitRequest())
            break;
    }
    in_ = nullptr;
    app_.UnloadPlugins();
}

std::optional<std::string> ScriptSession::NextLine() {
    std::string line;
    if (in_ == nullptr || !std::getline(*in_, line))
        return std::nullopt;
    return line;
}

ScriptSession::Outcome ScriptSession::HandleLine(const std::string& text) {
    const ScriptLine line = ReadScriptLine(text);
    switch (line.kind) {
        case ScriptLine::Kind::kBlank:
            break;
        case ScriptLine::Kind::kError:
            Error(line.text);
            break;
        case ScriptLine::Kind::kPost:
            (batchPage_.IsUp() ? batchChannel_ : channel_).Post(QString::fromStdString(line.text));
            break;
        case ScriptLine::Kind::kHost:
            return HandleHost(line.object, line.text);
    }
    return Outcome::kContinue;
}

ScriptSession::Outcome ScriptSession::HandleHost(const Json::Value& line,
                                                 const std::string& command) {
    if (command == "quit") {
        if (!batchPage_.IsUp())
            app_.UnloadPlugins();
        return Outcome::kQuit;
    }
    if (batchPage_.IsUp() && NeedsMainWindow(command)) {
        Error("the batch dialog blocks the main window: " + command);
        return Outcome::kContinue;
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
    Json::Value batchPage;
    if (batchPage_.IsUp()) {
        batchPage = Json::Value(Json::objectValue);
        batchPage["visible"] = batchPage_.IsVisible();
    }
    state["batchPage"] = batchPage;
    Json::Value hidden(Json::arrayValue);
    for (const auto& document : app_.Documents().All()) {
        if (!document->IsHidden() || document->IsClosing())
            continue;
        Json::Value entry(Json::objectValue);
        entry["number"] = document->Number();
        entry["path"] = document->Path();
        hidden.append(entry);
    }
    state["hidden"] = hidden;
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
