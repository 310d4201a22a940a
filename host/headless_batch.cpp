#include "headless_batch.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <fstream>
#include <iostream>
#include <optional>

#include <json/writer.h>

#include "automation/batch_dialog_answers.h"
#include "automation/ribbon_press.h"
#include "batch_files.h"
#include "host_app.h"
#include "service_document_server.h"
#include "shard.h"

namespace pdfhost {
namespace {

namespace fs = std::filesystem;

// Time for the plug-in and its page to start, and for each file.
constexpr int kStartSeconds = 120;
constexpr int kSecondsPerFile = 120;

// The result of a batch that could not start.
constexpr int kNotStarted = 200001;

// Closes the batch page as its close button would.
void CloseBatchPage() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == QLatin1String("CProfileHtmlDlg")) {
            if (auto* dialog = qobject_cast<QDialog*>(widget))
                dialog->reject();
        }
    }
}

std::string Compact(const Json::Value& value) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "  ";
    return Json::writeString(builder, value);
}

// Writes `text` to `path` through a temporary file in the same folder and a rename.
bool WriteWhole(const fs::path& path, const std::string& text) {
    const fs::path temporary = path.string() + ".part";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out << text;
        if (!out.flush())
            return false;
    }
    std::error_code error;
    fs::rename(temporary, path, error);
    if (error)
        fs::remove(temporary, error);
    return !error;
}

}  // namespace

HeadlessBatch::HeadlessBatch(HostApp& app, BatchOptions options, std::vector<std::string> paths,
                             fs::path defaultWeb)
    : app_(app),
      options_(std::move(options)),
      paths_(std::move(paths)),
      web_(options_.web.empty() ? std::move(defaultWeb) : fs::path(options_.web)),
      previousWatch_(SetCurrentBatchWatch(this)) {}

HeadlessBatch::~HeadlessBatch() {
    SetCurrentBatchWatch(previousWatch_);
}

int HeadlessBatch::Run(std::ostream& out, std::ostream& errors) {
    Shard shard;
    try {
        if (!options_.shard.empty())
            shard = ParseShard(options_.shard, &ProcessEnvironment);
    } catch (const std::invalid_argument& error) {
        errors << "pdfhost: " << error.what() << '\n';
        return 2;
    }
    if (!options_.out.empty()) {
        std::error_code error;
        const fs::path folder = fs::absolute(options_.out, error).lexically_normal();
        fs::create_directories(folder, error);
        if (error || !fs::is_directory(folder)) {
            errors << "pdfhost: cannot make the output folder " << options_.out << '\n';
            return 2;
        }
        outFolder_ = folder.string();
    }
    const BatchInputs inputs = CollectBatchInputs(paths_);
    for (const std::string& missing : inputs.missing)
        reports_.push_back(BatchFileReport{.path = missing, .reason = "no such file or folder"});
    const std::vector<std::string> files = Prepare(FilesOfShard(inputs.files, shard));
    if (!files.empty()) {
        WriteConfiguration();
        QueueAnswers(files);
        PressBatchRedact(files.size(), errors);
        for (const std::string& file : files) {
            BatchFileReport& report = reports_[index_.at(file)];
            if (report.Redacted())
                continue;
            if (const auto refused = refused_.find(file); refused != refused_.end())
                report.reason = refused->second;
            else if (const auto unsaved = unsaved_.find(file); unsaved != unsaved_.end())
                report.reason = "cannot save " + unsaved->second;
            else if (std::find(failedByPage_.begin(), failedByPage_.end(), file) !=
                     failedByPage_.end())
                report.reason = "the batch could not redact it";
            else
                report.reason = timedOut_ ? "timed out" : "not processed";
        }
    }
    PrintBatchReport(out, reports_);
    if (!options_.report.empty() && !WriteReport(errors))
        return 1;
    const bool allRedacted = std::all_of(reports_.begin(), reports_.end(),
                                         [](const BatchFileReport& r) { return r.Redacted(); });
    return allRedacted ? 0 : 1;
}

std::vector<std::string> HeadlessBatch::Prepare(const std::vector<std::string>& files) {
    std::vector<std::string> listed;
    std::map<std::string, std::string> claimed;  // output -> the file that makes it
    for (const std::string& file : files) {
        index_[file] = reports_.size();
        reports_.push_back(BatchFileReport{.path = file});
        BatchFileReport& report = reports_.back();
        const std::string target =
            BatchTarget(file, outFolder_, options_.Prefix(), options_.Suffix());
        std::error_code error;
        if (const auto first = claimed.find(target); first != claimed.end()) {
            report.reason = "same output as " + first->second + ": " + target;
        } else if (!options_.overwrite && fs::exists(target, error)) {
            report.reason = "output exists (--overwrite replaces it): " + target;
        } else {
            claimed.emplace(target, file);
            listed.push_back(file);
        }
    }
    return listed;
}

void HeadlessBatch::WriteConfiguration() {
    // The plug-in's developers' file points its pages at the reference page in batch mode,
    // unless the profile has one of its own.
    const fs::path folder = app_.ProfileFolder().UserDataFolder() / "sblm.io";
    const fs::path file = folder / "brevan.config";
    std::error_code error;
    if (fs::exists(file, error))
        return;
    fs::create_directories(folder, error);
    QString address = QUrl::fromLocalFile(
                          QString::fromStdString(fs::absolute(web_ / "index.html", error).string()))
                          .toString(QUrl::FullyEncoded);
    address += "?batchRedaction=true";
    if (!options_.terms.empty())
        address += "&terms=" + QString::fromLatin1(
                                   QUrl::toPercentEncoding(QString::fromStdString(options_.terms)));
    Json::Value config(Json::objectValue);
    config["custom_url"] = address.toStdString();
    config["internet_connection"] = true;
    WriteWhole(file, Compact(config) + "\n");
}

void HeadlessBatch::QueueAnswers(const std::vector<std::string>& files) {
    DialogAnswers& answers = app_.Answers();
    // A first use greets the user, who chooses to sign in, and signs in.
    answers.Queue("welcome", 0);
    answers.Queue("signIn", true);
    Json::Value list(Json::arrayValue);
    for (const std::string& file : files)
        list.append(file);
    answers.Queue("fileList", list);
    const bool keepName = options_.Prefix().empty() && options_.Suffix().empty();
    Json::Value record(Json::objectValue);
    record[outFolder_.empty() ? "sameFolder" : "specificFolder"] = true;
    if (!outFolder_.empty())
        record["folder"] = outFolder_;
    record[keepName ? "keepName" : "addToName"] = true;
    record["prefix"] = options_.Prefix();
    record["suffix"] = options_.Suffix();
    record["overwrite"] = options_.overwrite;
    answers.Queue("options", record);
    // Existing outputs were left out unless they may be replaced.
    answers.Queue("overwrite", true);
    answers.Queue("result", 1);
    // The editor's prompt before an apply is answered OK, once per file.
    for (std::size_t i = 0; i < files.size(); ++i)
        answers.Queue("messageBox", 1);
}

void HeadlessBatch::Listen(const Json::Value& line) {
    const std::string kind = line["dialog"].asString();
    if (kind == "fileList") {
        fileListShown_ = true;
        for (const Json::Value& row : line["rows"]) {
            const std::string path = row["folder"].asString() + "/" + row["name"].asString();
            const auto found = index_.find(path);
            if (found == index_.end())
                continue;
            if (row["error"].asString().empty()) {
                reports_[found->second].pages = row["pages"].asInt();
            } else {
                refused_[path] = row["error"].asString() + " (" + row["errorKey"].asString() + ")";
            }
        }
    } else if (kind == "result") {
        for (const Json::Value& file : line["failedFileList"])
            failedByPage_.push_back(file.asString());
        // A batch that could not start keeps its page up after the result; nobody is there to
        // try again, so the page is closed once the result has gone.
        if (line["ret"].asInt() == kNotStarted)
            QTimer::singleShot(0, [] { CloseBatchPage(); });
    }
}

void HeadlessBatch::PressBatchRedact(std::size_t files, std::ostream& errors) {
    std::optional<ServiceDocumentServer> server;
    std::string address = app_.Options().accountServer;
    if (address.empty()) {
        server.emplace();
        address = server->Address();
    }
    BatchDialogAnswers answers(app_, [this](const Json::Value& line) { Listen(line); });
    app_.LoadPlugins();
    app_.Account().SignIn(address);
    // A page that never ends the batch is closed, as its close button would.
    QTimer watchdog;
    watchdog.setSingleShot(true);
    QObject::connect(&watchdog, &QTimer::timeout, [this] {
        timedOut_ = true;
        CloseBatchPage();
    });
    watchdog.start((kStartSeconds + kSecondsPerFile * static_cast<int>(files)) * 1000);
    Json::Value press(Json::objectValue);
    press["item"] = "BatchRedact";
    if (const std::string error = PressRibbonEntry(app_, press); !error.empty())
        errors << "pdfhost: " << error << '\n';
    else if (!fileListShown_)
        errors << "pdfhost: the plug-in showed no batch file list\n";
    watchdog.stop();
    app_.UnloadPlugins();
}

bool HeadlessBatch::WriteReport(std::ostream& errors) const {
    std::error_code error;
    const fs::path path = fs::absolute(options_.report, error);
    if (!WriteWhole(path, Compact(BatchReportJson(reports_)) + "\n")) {
        errors << "pdfhost: cannot write the report " << options_.report << '\n';
        return false;
    }
    return true;
}

void HeadlessBatch::RedactionsApplied(const std::string& source,
                                      const std::vector<std::string>& names) {
    const auto found = index_.find(source);
    if (found == index_.end())
        return;
    for (const auto& [kind, count] : FindingsByKind(names))
        reports_[found->second].findings[kind] += count;
}

void HeadlessBatch::SavedAs(const std::string& source, const std::string& target, bool saved) {
    const auto found = index_.find(source);
    if (found == index_.end())
        return;
    if (saved)
        reports_[found->second].output = target;
    else
        unsaved_[source] = target;
}

}  // namespace pdfhost
