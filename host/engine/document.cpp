#include "engine/document.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <utility>

#include "engine/atomic_save.h"
#include "engine/error.h"
#include "engine/form_tree_cycles.h"
#include "engine/info_dictionary.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/page_objects.h"
#include "engine/pdf_factory.h"
#include "engine/permissions.h"

namespace pdfhost::engine {
namespace {

constexpr float kMaxDpi = 1200;
constexpr double kMaxRenderPixels = 1 << 28;

// A PDF file has its "%PDF-" header within its first kilobyte.
bool LooksLikePdf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw Error("cannot open " + path + ": " + std::strerror(errno));
    std::string head(1024, '\0');
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(in.gcount()));
    return head.find("%PDF-") != std::string::npos;
}

void CheckOpenable(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        const bool missing = !error || error == std::errc::no_such_file_or_directory;
        throw Error("cannot open " + path + ": " + (missing ? "no such file" : error.message()));
    }
    if (std::filesystem::is_directory(status)) {
        throw Error("cannot open " + path + ": is a folder");
    }
    if (!LooksLikePdf(path))
        throw Error("cannot open " + path + ": not a PDF file");
}

bool HasEncryption(pdf_document* doc) {
    return doc->crypt != nullptr;
}

// Permission bits of an encrypted document for a reader without the owner password.
std::uint32_t GrantedBits(fz_context* ctx, pdf_document* doc) {
    return static_cast<std::uint32_t>(
               CallMupdf(ctx, "cannot read the permissions",
                         [&] { return pdf_document_permissions(ctx, doc); })) &
           permission::kAll;
}

}  // namespace

Document::Document(Context& context, pdf_document* doc, std::string path, std::uint32_t permissions)
    : context_(&context), doc_(doc), path_(std::move(path)), permissions_(permissions) {}

Document::Document(Document&& other) noexcept
    : context_(other.context_),
      doc_(std::exchange(other.doc_, nullptr)),
      path_(std::move(other.path_)),
      permissions_(other.permissions_),
      revision_(other.revision_),
      pages_(std::move(other.pages_)),
      index_(std::move(other.index_)) {}

Document& Document::operator=(Document&& other) noexcept {
    if (this != &other) {
        Close();
        context_ = other.context_;
        doc_ = std::exchange(other.doc_, nullptr);
        path_ = std::move(other.path_);
        permissions_ = other.permissions_;
        revision_ = other.revision_;
        pages_ = std::move(other.pages_);
        index_ = std::move(other.index_);
    }
    return *this;
}

Document::~Document() {
    Close();
}

void Document::Close() noexcept {
    index_.Clear();
    pages_.Drop();
    if (doc_ != nullptr)
        pdf_drop_document(context_->get(), std::exchange(doc_, nullptr));
}

void Document::IndexPages() {
    pages_.Load(fz(), Live());
}

ObjPtr Document::PageObject(int page, std::string_view what) const {
    return pages_.LookUp(fz(), Live(), page, what);
}

PagePtr Document::LoadPage(int page, std::string_view what) const {
    return pages_.LoadPage(fz(), Live(), page, what);
}

Document Document::Open(Context& context, const std::string& path, const std::string& password) {
    CheckOpenable(path);
    fz_context* ctx = context.get();
    const std::string damaged = "cannot open " + path + ": damaged PDF";
    Document document(context,
                      CallMupdf(ctx, damaged, [&] { return pdf_open_document(ctx, path.c_str()); }),
                      path, permission::kAll);
    pdf_document* doc = document.doc_;

    const bool needs_password =
        CallMupdf(ctx, damaged, [&] { return pdf_needs_password(ctx, doc); }) != 0;
    int authenticated = 0;
    if (needs_password || (HasEncryption(doc) && !password.empty())) {
        authenticated = CallMupdf(
            ctx, damaged, [&] { return pdf_authenticate_password(ctx, doc, password.c_str()); });
    }
    if (needs_password && authenticated == 0) {
        throw PasswordError("cannot open " + path +
                            (password.empty() ? ": a password is required" : ": wrong password"));
    }
    constexpr int kOwnerAuthenticated = 4;
    if (HasEncryption(doc) && (authenticated & kOwnerAuthenticated) == 0) {
        document.permissions_ = GrantedBits(ctx, doc);
    }

    if (CallMupdf(ctx, damaged, [&] { return pdf_count_pages(ctx, doc); }) <= 0) {
        throw Error(damaged + ": no pages");
    }
    document.IndexPages();
    try {
        BreakFormTreeCycles(document);
    } catch (const Error&) {
        // A tree too damaged to walk is left to the engine's own checks.
    }
    return document;
}

Document Document::CreateBlank(Context& context) {
    return PdfFactory(context).Build(PdfDescription{.pages = {PageDescription::Blank()}});
}

fz_context* Document::fz() const {
    return context_->get();
}

pdf_document* Document::Live() const {
    if (doc_ == nullptr)
        throw Error("the document was moved away");
    return doc_;
}

int Document::PageCount() const {
    pdf_document* doc = Live();
    fz_context* ctx = fz();
    return CallMupdf(ctx, "cannot count pages", [&] { return pdf_count_pages(ctx, doc); });
}

void Document::CheckPage(int page) const {
    const int count = PageCount();
    if (page < 0 || page >= count) {
        throw Error("page " + std::to_string(page) + " is out of range (the document has " +
                    std::to_string(count) + " pages)");
    }
}

bool Document::IsEncrypted() const {
    return HasEncryption(Live());
}

bool Document::WasRepaired() const {
    return pdf_was_repaired(fz(), Live()) != 0;
}

bool Document::HasInfo() const {
    pdf_document* doc = Live();
    fz_context* ctx = fz();
    return CallMupdf(ctx, "cannot read the document information", [&] {
               return pdf_is_dict(ctx, pdf_dict_get(ctx, pdf_trailer(ctx, doc), PDF_NAME(Info)));
           }) != 0;
}

std::optional<std::string> Document::InfoString(const std::string& key) const {
    struct Bytes {
        const char* data;
        std::size_t size;
    };
    pdf_document* doc = Live();
    fz_context* ctx = fz();
    const Bytes bytes = CallMupdf(ctx, "cannot read the document information", [&] {
        pdf_obj* info = pdf_dict_get(ctx, pdf_trailer(ctx, doc), PDF_NAME(Info));
        pdf_obj* value = pdf_dict_gets(ctx, info, key.c_str());
        if (!pdf_is_string(ctx, value))
            return Bytes{nullptr, 0};
        return Bytes{pdf_to_str_buf(ctx, value), pdf_to_str_len(ctx, value)};
    });
    if (bytes.data == nullptr)
        return std::nullopt;
    return std::string(bytes.data, bytes.size);
}

void Document::SetInfoString(const std::string& key, const std::string& bytes) {
    PutInfoString(fz(), Live(), key, bytes);
    MarkChanged();
}

std::vector<PageObjectType> Document::PageObjects(int page) const {
    CheckPage(page);
    pdf_document* doc = Live();
    fz_context* ctx = fz();
    const ObjPtr page_obj = PageObject(page, "cannot find page " + std::to_string(page));
    return ListPageObjects(ctx, doc, page_obj.get());
}

Rect Document::PageBox(int page) const {
    CheckPage(page);
    fz_context* ctx = fz();
    const char* what = "cannot read the page size";
    const ObjPtr page_obj = PageObject(page, what);
    const fz_rect box = CallMupdf(ctx, what, [&] {
        return pdf_to_rect(ctx, pdf_dict_get_inheritable(ctx, page_obj.get(), PDF_NAME(MediaBox)));
    });
    Rect rect{std::min(box.x0, box.x1), std::min(box.y0, box.y1), std::max(box.x0, box.x1),
              std::max(box.y0, box.y1)};
    // A page without a usable MediaBox is shown as US Letter, as MuPDF does.
    if (rect.Width() <= 0 || rect.Height() <= 0)
        rect = Rect{0, 0, 612, 792};
    return rect;
}

RgbImage Document::Render(int page, float dpi) const {
    CheckPage(page);
    if (!(dpi > 0 && dpi <= kMaxDpi)) {
        throw Error("cannot render at " + std::to_string(dpi) + " dpi (allowed: above 0 up to " +
                    std::to_string(static_cast<int>(kMaxDpi)) + ")");
    }
    fz_context* ctx = fz();
    const std::string what = "cannot render page " + std::to_string(page);
    const PagePtr loaded = LoadPage(page, what);
    const fz_matrix scale = fz_scale(dpi / 72, dpi / 72);
    const fz_rect bounds = CallMupdf(
        ctx, what, [&] { return fz_transform_rect(pdf_bound_page(ctx, loaded.get()), scale); });
    if (static_cast<double>(bounds.x1 - bounds.x0) * (bounds.y1 - bounds.y0) > kMaxRenderPixels) {
        throw Error(what + ": the image would be too large");
    }
    PixmapPtr pixmap(ctx, CallMupdf(ctx, what, [&] {
                         return fz_new_pixmap_from_page(ctx, &loaded.get()->super, scale,
                                                        fz_device_rgb(ctx), 0);
                     }));
    fz_pixmap* pix = pixmap.get();
    RgbImage image;
    image.width = fz_pixmap_width(ctx, pix);
    image.height = fz_pixmap_height(ctx, pix);
    image.stride = static_cast<int>(fz_pixmap_stride(ctx, pix));
    const unsigned char* samples = fz_pixmap_samples(ctx, pix);
    image.pixels.assign(samples, samples + static_cast<std::size_t>(image.stride) * image.height);
    return image;
}

void Document::SaveFull(const std::string& path) {
    WriteCopy(path);
    path_ = path;
}

void Document::WriteCopy(const std::string& path) const {
    pdf_write_options options = pdf_default_write_options;
    options.do_incremental = 0;
    options.do_garbage = 1;
    options.do_encrypt = PDF_ENCRYPT_KEEP;
    SaveReplacing(fz(), Live(), path, options);
}

}  // namespace pdfhost::engine
