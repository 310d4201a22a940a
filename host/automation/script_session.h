// Scripted mode: one JSON object per input line, handled completely (with everything it causes
// printed) before the next one; answers are JSON lines on `out`.
#pragma once

#include <istream>
#include <optional>
#include <ostream>
#include <string>

#include <json/value.h>

#include "automation/automation_channel.h"
#include "automation/batch_dialog_answers.h"
#include "automation/batch_page_run.h"
#include "automation/json_line_writer.h"

namespace pdfhost {

class HostApp;
class HostDocument;

class ScriptSession {
  public:
    enum class Outcome { kContinue, kQuit };

    // Publishes the page channels of the task pane and of the batch page (unless `pageChannel`
    // is false: then plug-ins show their pages in their own browsers) and takes the host's
    // dialog output. Make the session before
    // HostApp::LoadPlugins, so that plug-ins find the channel while they initialise.
    ScriptSession(HostApp& app, std::ostream& out, bool pageChannel = true);
    ~ScriptSession();
    ScriptSession(const ScriptSession&) = delete;
    ScriptSession& operator=(const ScriptSession&) = delete;

    // Handles one input line. `quit` unloads the plug-ins and answers kQuit; while the batch
    // page is up it only answers kQuit (the page's modal run ends first).
    Outcome HandleLine(const std::string& line);
    // Opens a file as an "open" line does.
    void OpenFile(const std::string& path);
    // Handles the lines of `in` until `quit` or the end of input (which counts as `quit`).
    void Run(std::istream& in);

    AutomationChannel& Channel() { return channel_; }
    AutomationChannel& BatchChannel() { return batchChannel_; }

  private:
    Outcome HandleHost(const Json::Value& line, const std::string& command);
    void New();
    void Save(const Json::Value& line);
    void Wait(const Json::Value& line);
    void State();
    // The visible document named by the line's "doc", or null after printing an error.
    HostDocument* DocumentOf(const Json::Value& line);
    void Error(const std::string& text);
    void Opened(const HostDocument& document);
    // The next line of the input being run, or nothing at its end (or outside Run).
    std::optional<std::string> NextLine();

    HostApp& app_;
    JsonLineWriter out_;
    AutomationChannel channel_;
    AutomationChannel batchChannel_;
    std::istream* in_ = nullptr;
    BatchDialogAnswers batchAnswers_;
    BatchPageRun batchPage_;
};

}  // namespace pdfhost
