// The document lifecycle as plug-ins see it: which hooks fire, in which order, with what.
#include <fstream>
#include <functional>
#include <iterator>
#include <vector>

#include "engine/document.h"
#include "host_test_support.h"
#include "recording_hooks.h"
#include "wide_text.h"

namespace pdfhost {
namespace {

using hostops::Op;
using testing::CallHost;
using testing::RecordingHooks;

using Calls = std::vector<std::string>;

class DocumentEvents : public testing::HostFixture {
  protected:
    DocumentEvents() {
        path_ = testing::WritePdf(files_, "three.pdf", testing::ThreePages());
        CallHost<Op::HostAppRegisterDocEvents>(hooks_.Record());
    }

    HostDocument& Open() {
        HostApp::OpenResult result = app_.OpenDocument(path_);
        EXPECT_NE(result.document, nullptr) << result.error;
        return *result.document;
    }

    RecordingHooks hooks_;
    std::string path_;
};

TEST_F(DocumentEvents, OpeningFiresWillOpenDidOpenThenActivate) {
    HostDocument& first = Open();
    EXPECT_EQ(hooks_.Take(), (Calls{"will-open", "did-open 1", "activate 1"}));
    EXPECT_EQ(first.Path(), std::filesystem::path(path_).lexically_normal().string());
    HostDocument& second = Open();
    EXPECT_EQ(hooks_.Take(), (Calls{"will-open", "did-open 2", "activate 2"}));
    EXPECT_EQ(app_.Documents().Active(), &second);
    EXPECT_EQ(CallHost<Op::HostAppGetActiveDoc>(), second.Handle());
    EXPECT_EQ(CallHost<Op::HostAppGetDocCount>(), 2);
    EXPECT_EQ(CallHost<Op::HostAppGetDocByIndex>(0), first.Handle());
}

TEST_F(DocumentEvents, AFileThatCannotBeOpenedFiresNothing) {
    const HostApp::OpenResult missing = app_.OpenDocument((files_ / "missing.pdf").string());
    EXPECT_EQ(missing.document, nullptr);
    EXPECT_TRUE(
        missing.error.starts_with("cannot open " + (files_ / "missing.pdf").string() + ": "))
        << missing.error;
    EXPECT_EQ(CallHost<Op::HostDocOpen>(L"/no/such.pdf", L"", 1, 0), nullptr);
    EXPECT_TRUE(hooks_.Take().empty());
    EXPECT_TRUE(app_.Documents().All().empty());
}

TEST_F(DocumentEvents, ClosingTheActiveTabActivatesItsNeighbour) {
    Open();
    Open();
    Open();
    hooks_.Take();
    app_.Activate(*app_.Documents().FindByNumber(2));
    EXPECT_EQ(hooks_.Take(), (Calls{"activate 2"}));
    app_.Activate(*app_.Documents().FindByNumber(2));
    EXPECT_TRUE(hooks_.Take().empty()) << "an active tab does not become active again";

    CallHost<Op::HostDocClose>(app_.Documents().FindByNumber(2)->Handle(), 0, 0, 0);
    EXPECT_EQ(hooks_.Take(), (Calls{"closing 2", "activate 3"}));
    app_.CloseDocument(*app_.Documents().FindByNumber(3));
    EXPECT_EQ(hooks_.Take(), (Calls{"closing 3", "activate 1"}));
    app_.CloseDocument(*app_.Documents().FindByNumber(1));
    EXPECT_EQ(hooks_.Take(), (Calls{"closing 1"}));
    EXPECT_EQ(CallHost<Op::HostAppGetActiveDoc>(), nullptr);
}

TEST_F(DocumentEvents, WhileTheActiveTabClosesTheTabTakingItsPlaceCountsAsActive) {
    Open();
    Open();
    hooks_.Take();
    HostDoc seen = nullptr;
    hooks_.duringNextHook = [&] { seen = CallHost<Op::HostAppGetActiveDoc>(); };
    app_.CloseDocument(*app_.Documents().FindByNumber(2));
    EXPECT_EQ(seen, app_.Documents().FindByNumber(1)->Handle());
    // Closing the last one leaves no document: the closing hook sees none.
    hooks_.duringNextHook = [&] { seen = CallHost<Op::HostAppGetActiveDoc>(); };
    app_.CloseDocument(*app_.Documents().FindByNumber(1));
    EXPECT_EQ(seen, nullptr);
    EXPECT_EQ(hooks_.Take(), (Calls{"closing 2", "activate 1", "closing 1"}));
}

TEST_F(DocumentEvents, ClosingABackgroundTabKeepsTheActiveOne) {
    HostDocument& first = Open();
    Open();
    hooks_.Take();
    app_.CloseDocument(first);
    EXPECT_EQ(hooks_.Take(), (Calls{"closing 1"}));
    EXPECT_EQ(app_.Documents().Active()->Number(), 2);
}

TEST_F(DocumentEvents, OtherTabLeavesNoActiveDocumentUntilATabIsChosen) {
    HostDocument& document = Open();
    hooks_.Take();
    app_.ActivateOtherTab();
    EXPECT_EQ(hooks_.Take(), (Calls{"other-tab"}));
    EXPECT_EQ(CallHost<Op::HostAppGetActiveDoc>(), nullptr);
    CallHost<Op::HostAppActivateDoc>(document.Handle());
    EXPECT_EQ(hooks_.Take(), (Calls{"activate 1"}));
}

TEST_F(DocumentEvents, ModifiedFiresOnceUntilASaveWritesAFullFileThatReopens) {
    HostDocument& document = Open();
    hooks_.Take();
    EXPECT_EQ(CallHost<Op::HostDocIsModified>(document.Handle()), 0);
    document.Engine().SetInfoString("Title", "Saved by the host");
    CallHost<Op::HostDocSetChanged>(document.Handle());
    CallHost<Op::HostDocSetChanged>(document.Handle());
    EXPECT_EQ(hooks_.Take(), (Calls{"modified 1"}));
    EXPECT_EQ(CallHost<Op::HostDocIsModified>(document.Handle()), 1);

    EXPECT_EQ(CallHost<Op::HostDocSave>(document.Handle(), 0, 0, 1, 0), 1);
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 1"}));
    EXPECT_EQ(CallHost<Op::HostDocIsModified>(document.Handle()), 0);
    CallHost<Op::HostDocSetChanged>(document.Handle());
    EXPECT_EQ(hooks_.Take(), (Calls{"modified 1"}));

    engine::Context context;
    const engine::Document reopened = engine::Document::Open(context, path_);
    EXPECT_EQ(reopened.PageCount(), 3);
    EXPECT_EQ(reopened.InfoString("Title"), "Saved by the host");
    // A full save rewrites the file; an incremental one would only append to it.
    std::ifstream file(path_, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    EXPECT_EQ(bytes.find("%%EOF"), bytes.rfind("%%EOF"));
}

TEST_F(DocumentEvents, ANewDocumentIsTemporaryAndCannotBeSavedInPlace) {
    HostDocument& document = app_.NewDocument();
    EXPECT_EQ(hooks_.Take(), (Calls{"will-open", "did-open 1", "activate 1"}));
    EXPECT_EQ(CallHost<Op::HostDocIsTemporary>(document.Handle()), 1);
    EXPECT_EQ(CallHost<Op::HostDocGetPageCount>(document.Handle()), 1);
    HostWideString text = CallHost<Op::HostWideStringNew>();
    CallHost<Op::HostDocGetFilePath>(document.Handle(), text);
    EXPECT_EQ(testing::WideText(text), L"");
    CallHost<Op::HostDocGetFileName>(document.Handle(), text);
    EXPECT_EQ(testing::WideText(text), L"Untitled-1.pdf");
    CallHost<Op::HostWideStringDelete>(text);

    EXPECT_EQ(CallHost<Op::HostDocSave>(document.Handle(), 0, 0, 1, 0), 0);
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 0"}));
}

TEST_F(DocumentEvents, HiddenDocumentsHaveNoTabButCloseWithTheHook) {
    Open();
    hooks_.Take();
    const std::wstring wide = WideOf(path_);
    HostOpenHiddenOptions quiet{};
    quiet.readOnly = 1;
    quiet.quiet = 1;
    const HostDoc hidden = CallHost<Op::HostDocOpenHidden>(wide.c_str(), &quiet);
    ASSERT_NE(hidden, nullptr);
    EXPECT_TRUE(hooks_.Take().empty());
    EXPECT_EQ(CallHost<Op::HostAppGetDocCount>(), 1);
    EXPECT_EQ(CallHost<Op::HostDocGetPageCount>(hidden), 3);
    CallHost<Op::HostAppActivateDoc>(hidden);
    EXPECT_EQ(app_.Documents().Active()->Number(), 1);

    const HostDoc announced = CallHost<Op::HostDocOpenHidden>(wide.c_str(), nullptr);
    EXPECT_EQ(hooks_.Take(), (Calls{"will-open", "did-open 3"}));

    CallHost<Op::HostDocClose>(hidden, 0, 0, 0);
    CallHost<Op::HostDocClose>(announced, 0, 0, 0);
    EXPECT_EQ(hooks_.Take(), (Calls{"closing 2", "closing 3"}));
    EXPECT_EQ(app_.Documents().Active()->Number(), 1);
}

TEST_F(DocumentEvents, HooksMayUnregisterAndCloseWhileTheyRun) {
    RecordingHooks second;
    CallHost<Op::HostAppRegisterDocEvents>(second.Record());
    CallHost<Op::HostAppRegisterDocEvents>(second.Record());  // once is enough
    // The first record unregisters the second during will-open: the second hears nothing more.
    hooks_.duringNextHook = [&] { CallHost<Op::HostAppUnregisterDocEvents>(second.Record()); };
    Open();
    EXPECT_EQ(hooks_.Take(), (Calls{"will-open", "did-open 1", "activate 1"}));
    EXPECT_TRUE(second.Take().empty());

    // Closing from inside the closing hook is ignored; the document goes once.
    hooks_.duringNextHook = [&] {
        CallHost<Op::HostDocClose>(app_.Documents().FindByNumber(1)->Handle(), 0, 0, 0);
    };
    app_.CloseDocument(*app_.Documents().FindByNumber(1));
    EXPECT_EQ(hooks_.Take(), (Calls{"closing 1"}));
    EXPECT_TRUE(app_.Documents().All().empty());
}

TEST_F(DocumentEvents, ClosedDocumentHandlesGiveNeutralResults) {
    HostDocument& document = Open();
    const HostDoc handle = document.Handle();
    const NdxDoc pdf = CallHost<Op::HostDocGetPdfDoc>(handle);
    ASSERT_NE(pdf, nullptr);
    app_.CloseDocument(document);
    EXPECT_EQ(CallHost<Op::HostDocGetPdfDoc>(handle), nullptr);
    EXPECT_EQ(CallHost<Op::HostDocGetPageCount>(handle), 0);
    EXPECT_EQ(CallHost<Op::HostDocGetPermissions>(handle), 0u);
    EXPECT_EQ(CallHost<Op::NDXDocGetPageCount>(pdf), 0);
    EXPECT_EQ(CallHost<Op::HostDocGetPageView>(handle, 0), nullptr);
    CallHost<Op::HostDocSetChanged>(handle);
    CallHost<Op::HostDocClose>(handle, 0, 0, 0);
    CallHost<Op::HostAppActivateDoc>(handle);
    EXPECT_EQ(CallHost<Op::HostDocSave>(handle, 0, 0, 1, 0), 0);
}

}  // namespace
}  // namespace pdfhost
