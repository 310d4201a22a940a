// FakePlatform: the platform services for unit tests. Everything it is asked to do is recorded;
// dialogs, HTTP answers and downloads are scripted by the test; timers tick when the test says.
#pragma once

#include <deque>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "app/platform_services.h"
#include "fake_page_dialog.h"

class FakeFileDialog final : public FileDialog {
  public:
    FakeFileDialog(FileDialogSettings settings, std::optional<std::vector<std::wstring>> answer)
        : settings_(std::move(settings)), answer_(std::move(answer)) {}

    HostFileDialog Handle() override { return reinterpret_cast<HostFileDialog>(this); }
    bool Run() override { return answer_.has_value(); }
    std::vector<std::wstring> Paths() override {
        return answer_.value_or(std::vector<std::wstring>{});
    }
    const FileDialogSettings& settings() const { return settings_; }

  private:
    FileDialogSettings settings_;
    std::optional<std::vector<std::wstring>> answer_;
};

class FakePlatform : public PlatformServices {
  public:
    struct Download {
        std::string body;  // written to the target when `ok`
        bool ok = true;
    };

    std::wstring ModulePath() override { return L"/plugins/TarvoSablemark.tpi"; }
    std::unique_ptr<PageConnection> ConnectHostPageChannel() override { return nullptr; }
    std::wstring TempFolder() override { return tempFolder; }

    void SendWindowCommand(HostWindow window, unsigned command) override {
        sentCommands.emplace_back(window, command);
        if (onCommand)
            onCommand(command);
    }

    bool OpenUrlExternally(const std::wstring& url) override {
        openedUrls.push_back(url);
        return openUrlResult;
    }

    std::unique_ptr<FileDialog> MakeFileDialog(const FileDialogSettings& settings) override {
        dialogSettings.push_back(settings);
        return std::make_unique<FakeFileDialog>(settings, NextAnswer(dialogAnswers, {}));
    }

    int ShowWelcomeDialog(HostWindow parent, bool channelPackage) override {
        welcomeDialogs.emplace_back(parent, channelPackage);
        return NextAnswer(welcomeAnswers, 2);
    }
    int ShowInfoDialog(HostWindow parent) override {
        infoDialogs.push_back(parent);
        return NextAnswer(infoAnswers, 2);
    }

    // Page dialogs write their calls into `pageDialogLog` as "pane ..." or "batch ...".
    std::unique_ptr<PageDialog> MakeTaskPaneDialog(const PageDialogServices&,
                                                   HostWindow parent) override {
        pageDialogParents.push_back(parent);
        return std::make_unique<FakePageDialog>(pageDialogLog, "pane");
    }
    std::unique_ptr<BatchPageDialog> MakeBatchDialog(const PageDialogServices&,
                                                     HostWindow parent) override {
        pageDialogParents.push_back(parent);
        auto dialog = std::make_unique<FakePageDialog>(pageDialogLog, "batch");
        dialog->duringRun = duringBatchPage;
        return dialog;
    }
    std::optional<BatchChoice> ChooseBatchFiles(HostApi&, HostWindow parent) override {
        batchListParents.push_back(parent);
        return NextAnswer(batchChoices, {});
    }
    int ShowBatchResult(HostWindow, const BatchOutcome& outcome) override {
        batchResults.push_back(outcome);
        return NextAnswer(batchResultAnswers, 0);
    }
    bool IsConnectedToInternet() override { return connected; }

    unsigned StartTimer(unsigned periodMs, std::function<void()> tick) override {
        timers[++lastTimer] = {periodMs, std::move(tick)};
        return lastTimer;
    }
    void KillTimer(unsigned id) override { timers.erase(id); }
    // Runs the tick of a live timer; false when the id is not running.
    bool Tick(unsigned id) {
        const auto found = timers.find(id);
        if (found == timers.end())
            return false;
        auto tick = found->second.second;  // the tick may kill its own timer
        tick();
        return true;
    }

    int HttpGet(const std::wstring& url, std::string& body, const HttpSettings& settings) override {
        httpRequests.push_back(url);
        lastHttpSettings = settings;
        const auto found = httpBodies.find(url);
        if (found == httpBodies.end() || found->second.empty())
            return 3;
        body = found->second;
        return 0;
    }

    bool DownloadToFile(const std::wstring& url, const std::wstring& path,
                        DownloadProgress& progress, const HttpSettings&) override {
        downloadRequests.emplace_back(url, path);
        const auto found = downloads.find(url);
        if (found == downloads.end() || !found->second.ok)
            return false;
        const auto size = static_cast<unsigned long>(found->second.body.size());
        progress.OnProgress(0, size, 4);
        std::ofstream(std::string(path.begin(), path.end()), std::ios::binary)
            << found->second.body;
        progress.OnProgress(size, size, 5);
        progress.OnProgress(size, size, 6);
        return true;
    }

    // The oldest scripted answer, or `cancelled` when none is left.
    template <typename Answer>
    static Answer NextAnswer(std::deque<Answer>& answers, std::type_identity_t<Answer> cancelled) {
        if (!answers.empty()) {
            cancelled = std::move(answers.front());
            answers.pop_front();
        }
        return cancelled;
    }

    std::wstring tempFolder = L"/tmp/";
    std::vector<std::pair<HostWindow, unsigned>> sentCommands;
    std::function<void(unsigned)> onCommand;
    std::vector<std::wstring> openedUrls;
    bool openUrlResult = true;
    // One answer per dialog to come: the chosen paths, or nothing for Cancel.
    std::deque<std::optional<std::vector<std::wstring>>> dialogAnswers;
    std::vector<FileDialogSettings> dialogSettings;
    // Welcome and info dialogs: what was shown, and the answers to give (cancel when none).
    std::deque<int> welcomeAnswers;
    std::vector<std::pair<HostWindow, bool>> welcomeDialogs;
    std::deque<int> infoAnswers;
    std::vector<HostWindow> infoDialogs;
    std::vector<std::string> pageDialogLog;
    // Batch runs: the file lists' choices (none: cancelled), what runs inside the batch page's
    // modal run, and the result dialogs shown with their answers (closed without OK when none).
    std::deque<std::optional<BatchChoice>> batchChoices;
    std::vector<HostWindow> batchListParents;
    std::function<void()> duringBatchPage;
    std::vector<BatchOutcome> batchResults;
    std::deque<int> batchResultAnswers;
    std::vector<HostWindow> pageDialogParents;
    bool connected = true;
    std::map<unsigned, std::pair<unsigned, std::function<void()>>> timers;
    unsigned lastTimer = 0;
    std::map<std::wstring, std::string> httpBodies;
    std::vector<std::wstring> httpRequests;
    HttpSettings lastHttpSettings;
    std::map<std::wstring, Download> downloads;
    std::vector<std::pair<std::wstring, std::wstring>> downloadRequests;
};
