#include "batch_redaction.h"

#include <memory>
#include <utility>

#include "batch/open_documents.h"
#include "batch/output_naming.h"

namespace {

// The page dialog's results: its OK command and its close request.
constexpr int kPageOk = 1;
constexpr int kPageClosed = 2;

// The run's end codes of the page that decide what follows the result dialog.
constexpr int kEndKeepPage = 200001;
constexpr int kEndClosePage = 200010;

// Marks the application as in a batch for one scope.
class BatchModeScope {
  public:
    explicit BatchModeScope(BatchSessionContext& context) : context_(context) {
        context_.SetBatchMode(true);
    }
    ~BatchModeScope() { context_.SetBatchMode(false); }
    BatchModeScope(const BatchModeScope&) = delete;
    BatchModeScope& operator=(const BatchModeScope&) = delete;

  private:
    BatchSessionContext& context_;
};

// The host's reader, destroyed with the scope after it let go of its file.
class FileReader {
  public:
    explicit FileReader(HostApi& host) : host_(host), reader_(host.HostReaderCreate()) {}
    ~FileReader() {
        if (reader_ != nullptr) {
            host_.HostReaderDetach(reader_, 0);
            host_.HostReaderDestroy(reader_);
        }
    }
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;

    bool Opens(const std::wstring& path) {
        return reader_ != nullptr && host_.HostReaderOpen(reader_, path.c_str(), 0) == 0;
    }

  private:
    HostApi& host_;
    HostReader reader_;
};

}  // namespace

void BatchRedaction::Run() {
    const BatchModeScope inBatch(context_);
    state_ = State::Choosing;
    HostApi& host = context_.Host();
    const std::optional<BatchChoice> choice =
        context_.Dialogs().ChooseBatchFiles(host.HostAppGetMainWindow());
    if (choice)
        ShowPageDialog(*choice);
    state_ = State::Idle;
}

void BatchRedaction::ShowPageDialog(const BatchChoice& choice) {
    HostApi& host = context_.Host();
    const std::unique_ptr<BatchPageDialog> page =
        context_.Dialogs().MakeBatchPageDialog(host.HostAppGetMainWindow());
    if (!page)
        return;
    dialog_ = page.get();
    outputOptions_ = choice.options;
    for (const BatchFile& file : choice.files)
        queue_.push_back(file.path);
    fileCount_ = static_cast<int>(choice.files.size());
    pageCount_ = choice.totalPages;
    openDocs_ = OpenDocumentsByPath(host);
    state_ = State::WaitingForPage;
    page->RunModal();
    dialog_ = nullptr;
}

BatchRedaction::Counts BatchRedaction::Start() {
    if (!context_.ShowsPageWhileRunning() && dialog_ != nullptr)
        dialog_->SetVisible(false);
    batchStarted_ = true;
    state_ = State::Running;
    return {fileCount_, pageCount_};
}

int BatchRedaction::OpenNext() {
    if (!batchStarted_)
        return kNotOpened;
    if (queue_.empty())
        return kQueueEmpty;
    currentPath_ = std::move(queue_.front());
    queue_.pop_front();
    HostApi& host = context_.Host();
    if (const auto open = openDocs_.find(currentPath_); open != openDocs_.end()) {
        context_.SetBatchDocument(host.HostAppGetDocByIndex(open->second));
        currentWasOpen_ = true;
        return kOpened;
    }
    currentWasOpen_ = false;
    if (!FileReader(host).Opens(currentPath_))
        return kNotOpened;
    HostDoc doc = OpenHidden(host, currentPath_);
    if (doc == nullptr)
        return kNotOpened;
    context_.SetBatchDocument(doc);
    return kOpened;
}

void BatchRedaction::SaveCurrent() {
    HostDoc doc = context_.BatchDocument();
    if (doc == nullptr)
        return;
    const OutputTarget target = TargetOf(currentPath_, outputOptions_);
    if (target.kind == OutputTarget::Kind::None)
        return;
    HostApi& host = context_.Host();
    if (target.kind == OutputTarget::Kind::Source && host.HostDocIsTemporary(doc) != 0) {
        SaveOverSource(doc);
        return;
    }
    const HostSaveAsOptions options{1, 0, 1, 0};
    host.HostDocSaveAs(doc, target.path.c_str(), 0, 0, &options);
}

// A temporary document has no file of its own to write over: its view goes to its last page.
void BatchRedaction::SaveOverSource(HostDoc doc) {
    HostApi& host = context_.Host();
    HostDocView view = host.HostDocGetView(doc);
    if (view == nullptr || host.HostDocViewGetCurrentPageView(view) == nullptr)
        return;
    host.HostDocViewGotoPage(view, host.HostDocGetPageCount(doc) - 1);
}

void BatchRedaction::End(const BatchOutcome& outcome) {
    if (outcome.ret == kEndClosePage) {
        if (BatchPageDialog* page = std::exchange(dialog_, nullptr))
            page->EndModal(kPageClosed);
        state_ = State::Idle;
        return;
    }
    state_ = State::Reporting;
    const int answer =
        context_.Dialogs().ShowBatchResult(context_.Host().HostAppGetMainWindow(), outcome);
    state_ = State::Running;
    if (answer != kPageOk || dialog_ == nullptr)
        return;
    if (outcome.ret == kEndKeepPage) {
        dialog_->SetVisible(true);
        return;
    }
    std::exchange(dialog_, nullptr)->EndModal(kPageOk);
    state_ = State::Idle;
}
