// The PDF side of the tables: permissions, the Info dictionary, page views, pages and their
// content objects.
#include "engine/permissions.h"
#include "host_test_support.h"

namespace pdfhost::testing {
namespace {

class PdfTables : public HostFixture {
  protected:
    HostDoc Open(const engine::PdfDescription& layout, const std::string& password = {}) {
        const std::string name = "test" + std::to_string(++written_) + ".pdf";
        const HostApp::OpenResult result =
            app_.OpenDocument(WritePdf(files_, name, layout), password);
        EXPECT_NE(result.document, nullptr) << result.error;
        return result.document != nullptr ? result.document->Handle() : nullptr;
    }

    static std::string InfoBytes(NdxObject info, const char* key) {
        return ReadBytes([&](HostByteString out) { Call<NDXDictGetString>(info, key, out); },
                         "left over");
    }

    // The content object types of a page, walked as a plug-in walks them.
    std::vector<int> ObjectTypes(NdxPage page) {
        std::vector<int> types;
        NdxPosition position = Call<NDXPageGetFirstObjectPos>(page);
        while (position != nullptr) {
            const NdxPageObject object = Call<NDXPageGetNextObject>(page, &position);
            types.push_back(Call<NDXPageObjectGetType>(object));
        }
        return types;
    }
};

TEST_F(PdfTables, PermissionsOfAnEncryptedFile) {
    engine::PdfDescription layout = ThreePages();
    layout.encryption = engine::Encryption{
        .user_password = "",
        .owner_password = "owner",
        .permissions = engine::permission::kPrint | engine::permission::kAnnotate};
    const HostDoc restricted = Open(layout);
    EXPECT_EQ(Call<HostDocGetPermissions>(restricted) & (kHostPermCopy | kHostPermAnnotate), 0u);
    layout.encryption->permissions |= engine::permission::kModify;
    const HostDoc modifiable = Open(layout);
    const HostDoc owner = Open(layout, "owner");
    // Annotations can be added but not applied as redactions without modifying.
    const struct {
        HostDoc doc;
        int permission;
        int granted;
    } cases[] = {
        {restricted, kHostPermCopy, 0},     {restricted, kHostPermModify, 0},
        {restricted, kHostPermPrint, 1},    {restricted, kHostPermAnnotate, 0},
        {modifiable, kHostPermAnnotate, 1}, {owner, kHostPermCopy, 1},
        {owner, kHostPermModify, 1},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Call<HostDocGetPermission>(c.doc, c.permission), c.granted) << (&c - cases);
    }
}

TEST_F(PdfTables, InfoDictionaryStringsAreRawBytes) {
    engine::PdfDescription layout = ThreePages();
    layout.info = {{"CreationDate", "D:20240102030405+01'00'"}, {"Title", "A title"}};
    const NdxDoc pdf = Call<HostDocGetPdfDoc>(Open(layout));
    const NdxObject info = Call<NDXDocGetInfo>(pdf);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(Call<NDXObjectGetType>(info), kNdxObjectDictionary);
    EXPECT_EQ(InfoBytes(info, "CreationDate"), "D:20240102030405+01'00'");
    EXPECT_EQ(InfoBytes(info, "ModDate"), "");

    const NdxObject title = Call<NDXDictGet>(info, "Title");
    const NdxObject direct = Call<NDXObjectGetDirect>(title);
    EXPECT_EQ(Call<NDXObjectGetType>(direct), kNdxObjectString);
    EXPECT_EQ(ReadBytes([&](HostByteString out) { Call<NDXStringGetBytes>(direct, out); }),
              "A title");
    EXPECT_EQ(Call<NDXDictGet>(info, "Missing"), nullptr);
    EXPECT_EQ(Call<NDXDictGet>(info, nullptr), nullptr);
    EXPECT_EQ(Call<NDXDocGetRoot>(nullptr), nullptr);

    const NdxDoc bare = Call<HostDocGetPdfDoc>(Open(ThreePages()));
    EXPECT_EQ(Call<NDXDocGetInfo>(bare), nullptr);
}

TEST_F(PdfTables, PageViewsGiveParsablePages) {
    const engine::PdfDescription layout{
        .pages = {engine::PageDescription::TextLines({"one", "two"}),
                  engine::PageDescription::ImageOnly(), engine::PageDescription::Blank()}};
    const HostDoc doc = Open(layout);
    const HostPageView view = Call<HostDocGetPageView>(doc, 1);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(Call<HostDocGetPageView>(doc, 1), view);
    EXPECT_EQ(Call<HostDocGetPageView>(doc, 3), nullptr);
    EXPECT_EQ(Call<HostDocGetPageView>(doc, -1), nullptr);

    const NdxPage page = Call<HostPageViewGetPage>(view);
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(Call<NDXPageIsParsed>(page), 0);
    const NdxParseOptions options = Call<NDXParseOptionsNew>(1, 0, 0, 0);
    Call<NDXPageParse>(page, options);
    Call<NDXParseOptionsDestroy>(options);
    EXPECT_EQ(Call<NDXPageIsParsed>(page), 1);
    EXPECT_EQ(ObjectTypes(page), std::vector<int>{kNdxPageObjectImage});
    // The host's own page is not freed by the plug-in.
    Call<NDXPageDestroy>(page);
    EXPECT_EQ(Call<NDXPageCountObjects>(page), 1);

    const NdxPage blank = PageOf(doc, 2);
    Call<NDXPageParse>(blank, nullptr);
    EXPECT_EQ(Call<NDXPageIsParsed>(blank), 1);
    EXPECT_EQ(Call<NDXPageGetFirstObjectPos>(blank), nullptr);
}

TEST_F(PdfTables, PagesOfThePlugInLoadFromAPageDictionary) {
    const engine::PdfDescription layout{
        .pages = {engine::PageDescription::ImageOnly(),
                  engine::PageDescription::TextLines({"one", "two"})}};
    const HostDoc doc = Open(layout);
    const NdxDoc pdf = Call<HostDocGetPdfDoc>(doc);
    EXPECT_EQ(Call<NDXDocGetPageCount>(pdf), 2);
    const NdxObject dict = Call<NDXDocGetPage>(pdf, 1);
    ASSERT_NE(dict, nullptr);
    EXPECT_EQ(Call<NDXObjectGetType>(dict), kNdxObjectDictionary);
    EXPECT_EQ(Call<NDXDocGetPage>(pdf, 2), nullptr);

    const NdxPage page = LoadPage(pdf, 1);
    const std::vector<int> types = ObjectTypes(page);
    ASSERT_FALSE(types.empty());
    EXPECT_EQ(Call<NDXPageCountObjects>(page), static_cast<int>(types.size()));
    for (const int type : types)
        EXPECT_EQ(type, kNdxPageObjectText);

    // A position past the end and a null position end the walk.
    NdxPosition past = reinterpret_cast<NdxPosition>(uintptr_t{types.size() + 1});
    EXPECT_EQ(Call<NDXPageGetNextObject>(page, &past), nullptr);
    EXPECT_EQ(past, nullptr);
    EXPECT_EQ(Call<NDXPageGetNextObject>(page, nullptr), nullptr);

    // A page dictionary of this document is no page of another.
    const NdxPage foreign = Call<NDXPageNew>();
    Call<NDXPageLoad>(foreign, Call<HostDocGetPdfDoc>(Open(ThreePages())), dict, 0);
    Call<NDXPageParse>(foreign, nullptr);
    EXPECT_EQ(Call<NDXPageIsParsed>(foreign), 0);
    Call<NDXPageDestroy>(foreign);

    // Once the document closes, its objects and views are gone; the page stays the plug-in's.
    const NdxPageObject first = [&] {
        NdxPosition position = Call<NDXPageGetFirstObjectPos>(page);
        return Call<NDXPageGetNextObject>(page, &position);
    }();
    app_.CloseDocument(*app_.Documents().Find(doc));
    EXPECT_EQ(Call<NDXObjectGetType>(dict), 0);
    Call<NDXPageParse>(page, nullptr);
    Call<NDXPageDestroy>(page);
    EXPECT_EQ(Call<NDXPageIsParsed>(page), 0);
    EXPECT_EQ(Call<NDXPageObjectGetType>(first), 0);
}

}  // namespace
}  // namespace pdfhost::testing
