// The PDF side of the tables: permissions, the Info dictionary, page views, pages and their
// content objects.
#include "engine/permissions.h"
#include "host_test_support.h"

namespace pdfhost {
namespace {

using hostops::Op;
using testing::ByteText;
using testing::CallHost;

class PdfTables : public testing::HostFixture {
  protected:
    HostDoc Open(const engine::PdfDescription& layout, const std::string& password = {}) {
        const std::string name = "test" + std::to_string(++files) + ".pdf";
        const std::string path = testing::WritePdf(files_, name, layout);
        const HostApp::OpenResult result = app_.OpenDocument(path, password);
        EXPECT_NE(result.document, nullptr) << result.error;
        return result.document != nullptr ? result.document->Handle() : nullptr;
    }

    std::string InfoBytes(NdxObject info, const char* key) {
        HostByteString out = CallHost<Op::HostByteStringNew>();
        CallHost<Op::HostByteStringSet>(out, "left over");
        CallHost<Op::NDXDictGetString>(info, key, out);
        std::string bytes = ByteText(out);
        CallHost<Op::HostByteStringDelete>(out);
        return bytes;
    }

    int files = 0;

    // The content object types of a page, walked as a plug-in walks them.
    std::vector<int> ObjectTypes(NdxPage page) {
        std::vector<int> types;
        NdxPosition position = CallHost<Op::NDXPageGetFirstObjectPos>(page);
        while (position != nullptr) {
            const NdxPageObject object = CallHost<Op::NDXPageGetNextObject>(page, &position);
            types.push_back(CallHost<Op::NDXPageObjectGetType>(object));
        }
        return types;
    }
};

TEST_F(PdfTables, PermissionsOfAnEncryptedFile) {
    engine::PdfDescription layout = testing::ThreePages();
    layout.encryption = engine::Encryption{
        .user_password = "",
        .owner_password = "owner",
        .permissions = engine::permission::kPrint | engine::permission::kAnnotate};
    const HostDoc restricted = Open(layout);
    EXPECT_EQ(CallHost<Op::HostDocGetPermission>(restricted, kHostPermCopy), 0);
    EXPECT_EQ(CallHost<Op::HostDocGetPermission>(restricted, kHostPermModify), 0);
    EXPECT_EQ(CallHost<Op::HostDocGetPermission>(restricted, kHostPermPrint), 1);
    EXPECT_EQ(CallHost<Op::HostDocGetPermission>(restricted, kHostPermAnnotate), 0)
        << "annotations can be added but not applied as redactions without modifying";
    EXPECT_EQ(CallHost<Op::HostDocGetPermissions>(restricted) & (kHostPermCopy | kHostPermAnnotate),
              0u);

    layout.encryption->permissions |= engine::permission::kModify;
    const HostDoc modifiable = Open(layout);
    EXPECT_EQ(CallHost<Op::HostDocGetPermission>(modifiable, kHostPermAnnotate), 1);

    const HostDoc owner = Open(layout, "owner");
    EXPECT_EQ(CallHost<Op::HostDocGetPermission>(owner, kHostPermCopy), 1);
    EXPECT_EQ(CallHost<Op::HostDocGetPermission>(owner, kHostPermModify), 1);
}

TEST_F(PdfTables, InfoDictionaryStringsAreRawBytes) {
    engine::PdfDescription layout = testing::ThreePages();
    layout.info = {{"CreationDate", "D:20240102030405+01'00'"}, {"Title", "A title"}};
    const NdxDoc pdf = CallHost<Op::HostDocGetPdfDoc>(Open(layout));
    const NdxObject info = CallHost<Op::NDXDocGetInfo>(pdf);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(CallHost<Op::NDXObjectGetType>(info), kNdxObjectDictionary);
    EXPECT_EQ(InfoBytes(info, "CreationDate"), "D:20240102030405+01'00'");
    EXPECT_EQ(InfoBytes(info, "ModDate"), "");

    const NdxObject title = CallHost<Op::NDXDictGet>(info, "Title");
    const NdxObject direct = CallHost<Op::NDXObjectGetDirect>(title);
    EXPECT_EQ(CallHost<Op::NDXObjectGetType>(direct), kNdxObjectString);
    HostByteString bytes = CallHost<Op::HostByteStringNew>();
    CallHost<Op::NDXStringGetBytes>(direct, bytes);
    EXPECT_EQ(ByteText(bytes), "A title");
    CallHost<Op::HostByteStringDelete>(bytes);
    EXPECT_EQ(CallHost<Op::NDXDictGet>(info, "Missing"), nullptr);
    EXPECT_EQ(CallHost<Op::NDXDictGet>(info, nullptr), nullptr);

    const NdxDoc bare = CallHost<Op::HostDocGetPdfDoc>(Open(testing::ThreePages()));
    EXPECT_EQ(CallHost<Op::NDXDocGetInfo>(bare), nullptr);
}

TEST_F(PdfTables, CatalogueGivesItsEntries) {
    const NdxDoc pdf = CallHost<Op::HostDocGetPdfDoc>(Open(testing::ThreePages()));
    const NdxObject root = CallHost<Op::NDXDocGetRoot>(pdf);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(CallHost<Op::NDXObjectGetType>(root), kNdxObjectDictionary);
    EXPECT_NE(CallHost<Op::NDXDictGet>(root, "Pages"), nullptr);
    EXPECT_EQ(CallHost<Op::NDXDictGet>(root, "AcroForm"), nullptr);
    EXPECT_EQ(CallHost<Op::NDXDocGetRoot>(nullptr), nullptr);
}

TEST_F(PdfTables, PageViewsGiveParsablePages) {
    const engine::PdfDescription layout{
        .pages = {engine::PageDescription::TextLines({"one", "two"}),
                  engine::PageDescription::ImageOnly(), engine::PageDescription::Blank()}};
    const HostDoc doc = Open(layout);
    const HostPageView view = CallHost<Op::HostDocGetPageView>(doc, 1);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(CallHost<Op::HostDocGetPageView>(doc, 1), view);
    EXPECT_EQ(CallHost<Op::HostDocGetPageView>(doc, 3), nullptr);
    EXPECT_EQ(CallHost<Op::HostDocGetPageView>(doc, -1), nullptr);

    const NdxPage page = CallHost<Op::HostPageViewGetPage>(view);
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(CallHost<Op::NDXPageIsParsed>(page), 0);
    const NdxParseOptions options = CallHost<Op::NDXParseOptionsNew>(1, 0, 0, 0);
    CallHost<Op::NDXPageParse>(page, options);
    CallHost<Op::NDXParseOptionsDestroy>(options);
    EXPECT_EQ(CallHost<Op::NDXPageIsParsed>(page), 1);
    EXPECT_EQ(ObjectTypes(page), std::vector<int>{kNdxPageObjectImage});
    // The host's own page is not freed by the plug-in.
    CallHost<Op::NDXPageDestroy>(page);
    EXPECT_EQ(CallHost<Op::NDXPageCountObjects>(page), 1);

    const NdxPage blank =
        CallHost<Op::HostPageViewGetPage>(CallHost<Op::HostDocGetPageView>(doc, 2));
    CallHost<Op::NDXPageParse>(blank, nullptr);
    EXPECT_EQ(CallHost<Op::NDXPageIsParsed>(blank), 1);
    EXPECT_EQ(CallHost<Op::NDXPageGetFirstObjectPos>(blank), nullptr);
}

TEST_F(PdfTables, PagesOfThePlugInLoadFromAPageDictionary) {
    const engine::PdfDescription layout{
        .pages = {engine::PageDescription::ImageOnly(),
                  engine::PageDescription::TextLines({"one", "two"})}};
    const HostDoc doc = Open(layout);
    const NdxDoc pdf = CallHost<Op::HostDocGetPdfDoc>(doc);
    EXPECT_EQ(CallHost<Op::NDXDocGetPageCount>(pdf), 2);
    const NdxObject dict = CallHost<Op::NDXDocGetPage>(pdf, 1);
    ASSERT_NE(dict, nullptr);
    EXPECT_EQ(CallHost<Op::NDXObjectGetType>(dict), kNdxObjectDictionary);
    EXPECT_EQ(CallHost<Op::NDXDocGetPage>(pdf, 2), nullptr);

    const NdxPage page = CallHost<Op::NDXPageNew>();
    CallHost<Op::NDXPageLoad>(page, pdf, dict, 0);
    CallHost<Op::NDXPageParse>(page, nullptr);
    const std::vector<int> types = ObjectTypes(page);
    ASSERT_FALSE(types.empty());
    EXPECT_EQ(CallHost<Op::NDXPageCountObjects>(page), static_cast<int>(types.size()));
    for (const int type : types)
        EXPECT_EQ(type, kNdxPageObjectText);

    // A position past the end and a null position end the walk.
    NdxPosition past = reinterpret_cast<NdxPosition>(uintptr_t{types.size() + 1});
    EXPECT_EQ(CallHost<Op::NDXPageGetNextObject>(page, &past), nullptr);
    EXPECT_EQ(past, nullptr);
    EXPECT_EQ(CallHost<Op::NDXPageGetNextObject>(page, nullptr), nullptr);

    // Once the document closes, its objects and views are gone; the page stays the plug-in's.
    const NdxPageObject first = [&] {
        NdxPosition position = CallHost<Op::NDXPageGetFirstObjectPos>(page);
        return CallHost<Op::NDXPageGetNextObject>(page, &position);
    }();
    app_.CloseDocument(*app_.Documents().Find(doc));
    EXPECT_EQ(CallHost<Op::NDXObjectGetType>(dict), 0);
    CallHost<Op::NDXPageParse>(page, nullptr);
    CallHost<Op::NDXPageDestroy>(page);
    EXPECT_EQ(CallHost<Op::NDXPageIsParsed>(page), 0);
    EXPECT_EQ(CallHost<Op::NDXPageObjectGetType>(first), 0);
}

TEST_F(PdfTables, ObjectsOfOneDocumentAreNotPagesOfAnother) {
    const HostDoc first = Open(testing::ThreePages());
    const HostDoc second = Open(testing::ThreePages());
    const NdxObject dictOfFirst =
        CallHost<Op::NDXDocGetPage>(CallHost<Op::HostDocGetPdfDoc>(first), 0);
    const NdxPage page = CallHost<Op::NDXPageNew>();
    CallHost<Op::NDXPageLoad>(page, CallHost<Op::HostDocGetPdfDoc>(second), dictOfFirst, 0);
    CallHost<Op::NDXPageParse>(page, nullptr);
    EXPECT_EQ(CallHost<Op::NDXPageIsParsed>(page), 0);
    CallHost<Op::NDXPageDestroy>(page);
}

}  // namespace
}  // namespace pdfhost
