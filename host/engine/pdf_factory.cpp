#include "engine/pdf_factory.h"

#include <algorithm>
#include <cstring>

#include "engine/atomic_save.h"
#include "engine/content_stream.h"
#include "engine/info_dictionary.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/permissions.h"

namespace pdfhost::engine {
namespace {

constexpr const char* kWhat = "cannot build the PDF";
constexpr int kMaxImageSide = 4096;

// Adds the pages of a PdfDescription to a document. One Helvetica font object serves every page.
class PageBuilder {
  public:
    PageBuilder(fz_context* ctx, pdf_document* doc) : ctx_(ctx), doc_(doc) {}

    void Add(const PageDescription& recipe) {
        resources_ = NewDict(4);
        content_ = ContentStream();
        for (const PageItem& item : recipe.items) {
            std::visit([this](const auto& value) { Put(value); }, item);
        }
        BufferPtr content = NewBuffer(content_.str());
        const fz_rect box{0, 0, recipe.width, recipe.height};
        ObjPtr page(ctx_, CallMupdf(ctx_, kWhat, [&] {
                        return pdf_add_page(ctx_, doc_, box, 0, resources_.get(), content.get());
                    }));
        CallMupdf(ctx_, kWhat, [&] { pdf_insert_page(ctx_, doc_, -1, page.get()); });
    }

  private:
    void Put(const TextItem& item) {
        pdf_obj* fonts = Category(PDF_NAME(Font));
        pdf_obj* font = Font();
        CallMupdf(ctx_, kWhat, [&] { pdf_dict_puts(ctx_, fonts, "F1", font); });
        content_.Text("F1", item.size, item.x, item.y, item.text);
    }

    void Put(const ImageItem& item) {
        const std::string name = AddResource(PDF_NAME(XObject), "Im", NewImage(item).get());
        content_.SaveState();
        content_.MapUnitSquareTo(item.placement);
        content_.Draw(name);
        content_.RestoreState();
    }

    void Put(const PathItem& item) {
        content_.SaveState();
        content_.FillColor(0.2f, 0.4f, 0.8f);
        content_.StrokeColor(0.8f, 0.2f, 0.2f);
        content_.Rectangle(item.rect, item.fill);
        content_.RestoreState();
    }

    void Put(const ShadingItem& item) {
        const std::string name = AddResource(PDF_NAME(Shading), "Sh", NewShading(item.area).get());
        content_.SaveState();
        content_.ClipTo(item.area);
        content_.Shade(name);
        content_.RestoreState();
    }

    void Put(const FormItem& item) {
        const std::string name = AddResource(PDF_NAME(XObject), "Fm", NewForm(item).get());
        content_.SaveState();
        content_.MoveOriginTo(item.placement.left, item.placement.bottom);
        content_.Draw(name);
        content_.RestoreState();
    }

    // The page's resource dictionary of `category`, added when missing.
    pdf_obj* Category(pdf_obj* category) {
        return CallMupdf(ctx_, kWhat, [&] {
            pdf_obj* dict = pdf_dict_get(ctx_, resources_.get(), category);
            if (dict == nullptr)
                dict = pdf_dict_put_dict(ctx_, resources_.get(), category, 4);
            return dict;
        });
    }

    // Puts `object` into the page's resources of `category` under a new name: `prefix` and
    // the number of entries already there. Returns the name.
    std::string AddResource(pdf_obj* category, const std::string& prefix, pdf_obj* object) {
        pdf_obj* dict = Category(category);
        const int count = CallMupdf(ctx_, kWhat, [&] { return pdf_dict_len(ctx_, dict); });
        const std::string name = prefix + std::to_string(count);
        CallMupdf(ctx_, kWhat, [&] { pdf_dict_puts(ctx_, dict, name.c_str(), object); });
        return name;
    }

    pdf_obj* Font() {
        if (!font_) {
            font_ = ObjPtr(ctx_,
                           CallMupdf(ctx_, kWhat, [&] { return pdf_add_new_dict(ctx_, doc_, 4); }));
            CallMupdf(ctx_, kWhat, [&] {
                pdf_dict_put(ctx_, font_.get(), PDF_NAME(Type), PDF_NAME(Font));
                pdf_dict_put(ctx_, font_.get(), PDF_NAME(Subtype), PDF_NAME(Type1));
                pdf_dict_put_name(ctx_, font_.get(), PDF_NAME(BaseFont), "Helvetica");
                pdf_dict_put(ctx_, font_.get(), PDF_NAME(Encoding), PDF_NAME(WinAnsiEncoding));
            });
        }
        return font_.get();
    }

    ObjPtr NewImage(const ImageItem& item) {
        const int width = item.picture ? item.picture->width : item.pixel_width;
        const int height = item.picture ? item.picture->height : item.pixel_height;
        if (width < 1 || height < 1 || width > kMaxImageSide || height > kMaxImageSide ||
            (item.picture && (item.picture->stride < 3 * width ||
                              item.picture->pixels.size() <
                                  static_cast<std::size_t>(item.picture->stride) * height))) {
            throw Error(std::string(kWhat) + ": image size out of range");
        }
        PixmapPtr pixmap(ctx_, CallMupdf(ctx_, kWhat, [&] {
                             return fz_new_pixmap(ctx_, fz_device_rgb(ctx_), width, height, nullptr,
                                                  0);
                         }));
        if (item.picture) {
            CopyPixels(pixmap.get(), *item.picture);
        } else {
            FillGradient(pixmap.get(), item.seed);
        }
        ImagePtr image(ctx_, CallMupdf(ctx_, kWhat, [&] {
                           return fz_new_image_from_pixmap(ctx_, pixmap.get(), nullptr);
                       }));
        return ObjPtr(
            ctx_, CallMupdf(ctx_, kWhat, [&] { return pdf_add_image(ctx_, doc_, image.get()); }));
    }

    void CopyPixels(fz_pixmap* pixmap, const RgbImage& picture) {
        const std::ptrdiff_t stride = fz_pixmap_stride(ctx_, pixmap);
        unsigned char* samples = fz_pixmap_samples(ctx_, pixmap);
        for (int y = 0; y < picture.height; ++y) {
            std::copy_n(picture.pixels.data() + static_cast<std::ptrdiff_t>(y) * picture.stride,
                        3 * picture.width, samples + y * stride);
        }
    }

    void FillGradient(fz_pixmap* pixmap, int seed) {
        const int width = fz_pixmap_width(ctx_, pixmap);
        const int height = fz_pixmap_height(ctx_, pixmap);
        const std::ptrdiff_t stride = fz_pixmap_stride(ctx_, pixmap);
        unsigned char* samples = fz_pixmap_samples(ctx_, pixmap);
        const unsigned shift = static_cast<unsigned>(seed) * 53u;
        for (int y = 0; y < height; ++y) {
            unsigned char* row = samples + y * stride;
            for (int x = 0; x < width; ++x) {
                row[3 * x] = static_cast<unsigned char>(x * 255 / width + shift);
                row[3 * x + 1] = static_cast<unsigned char>(y * 255 / height + 2 * shift);
                row[3 * x + 2] = static_cast<unsigned char>((x + y) * 4 + 3 * shift);
            }
        }
    }

    ObjPtr NewShading(const Rect& area) {
        ObjPtr shading = NewDict(5);
        CallMupdf(ctx_, kWhat, [&] {
            pdf_obj* dict = shading.get();
            pdf_dict_put_int(ctx_, dict, PDF_NAME(ShadingType), 2);
            pdf_dict_put(ctx_, dict, PDF_NAME(ColorSpace), PDF_NAME(DeviceRGB));
            pdf_obj* coords = pdf_dict_put_array(ctx_, dict, PDF_NAME(Coords), 4);
            for (float value : {area.left, area.bottom, area.right, area.top}) {
                pdf_array_push_real(ctx_, coords, value);
            }
            pdf_obj* function = pdf_dict_put_dict(ctx_, dict, PDF_NAME(Function), 5);
            pdf_dict_put_int(ctx_, function, PDF_NAME(FunctionType), 2);
            pdf_obj* domain = pdf_dict_put_array(ctx_, function, PDF_NAME(Domain), 2);
            pdf_array_push_real(ctx_, domain, 0);
            pdf_array_push_real(ctx_, domain, 1);
            pdf_obj* c0 = pdf_dict_put_array(ctx_, function, PDF_NAME(C0), 3);
            pdf_obj* c1 = pdf_dict_put_array(ctx_, function, PDF_NAME(C1), 3);
            for (float value : {1.0f, 0.8f, 0.0f})
                pdf_array_push_real(ctx_, c0, value);
            for (float value : {0.0f, 0.3f, 0.9f})
                pdf_array_push_real(ctx_, c1, value);
            pdf_dict_put_int(ctx_, function, PDF_NAME(N), 1);
        });
        return shading;
    }

    ObjPtr NewForm(const FormItem& item) {
        const float width = item.placement.Width();
        const float height = item.placement.Height();
        ContentStream content;
        content.Rectangle({1, 1, width - 1, height - 1}, false);
        content.Text("F1", 12, 6, height / 2, item.text);
        BufferPtr buffer = NewBuffer(content.str());
        ObjPtr form = NewDict(6);
        pdf_obj* font = Font();
        CallMupdf(ctx_, kWhat, [&] {
            pdf_obj* dict = form.get();
            pdf_dict_put(ctx_, dict, PDF_NAME(Type), PDF_NAME(XObject));
            pdf_dict_put(ctx_, dict, PDF_NAME(Subtype), PDF_NAME(Form));
            pdf_dict_put_rect(ctx_, dict, PDF_NAME(BBox), fz_rect{0, 0, width, height});
            pdf_obj* resources = pdf_dict_put_dict(ctx_, dict, PDF_NAME(Resources), 1);
            pdf_obj* fonts = pdf_dict_put_dict(ctx_, resources, PDF_NAME(Font), 1);
            pdf_dict_puts(ctx_, fonts, "F1", font);
        });
        return ObjPtr(ctx_, CallMupdf(ctx_, kWhat, [&] {
                          return pdf_add_stream(ctx_, doc_, buffer.get(), form.get(), 0);
                      }));
    }

    ObjPtr NewDict(int capacity) {
        return ObjPtr(ctx_,
                      CallMupdf(ctx_, kWhat, [&] { return pdf_new_dict(ctx_, doc_, capacity); }));
    }

    BufferPtr NewBuffer(const std::string& bytes) {
        return BufferPtr(ctx_, CallMupdf(ctx_, kWhat, [&] {
                             return fz_new_buffer_from_copied_data(
                                 ctx_, reinterpret_cast<const unsigned char*>(bytes.data()),
                                 bytes.size());
                         }));
    }

    fz_context* ctx_;
    pdf_document* doc_;
    ObjPtr font_;
    ObjPtr resources_;
    ContentStream content_;
};

// The /P value: the granted bits, with the bits that must be set.
int PermissionValue(std::uint32_t granted) {
    constexpr std::uint32_t kAlwaysSet = 0xFFFFF0C0u;
    return static_cast<int>(kAlwaysSet | (granted & permission::kAll));
}

void CopyPassword(char (&target)[128], const std::string& password) {
    if (password.size() >= sizeof target)
        throw Error(std::string(kWhat) + ": password too long");
    std::memcpy(target, password.c_str(), password.size() + 1);
}

pdf_write_options WriteOptions(const PdfDescription& recipe) {
    pdf_write_options options = pdf_default_write_options;
    options.do_garbage = 1;
    if (recipe.encryption) {
        const Encryption& encryption = *recipe.encryption;
        options.do_encrypt = encryption.method == EncryptionMethod::kAes128 ? PDF_ENCRYPT_AES_128
                                                                            : PDF_ENCRYPT_RC4_128;
        options.permissions = PermissionValue(encryption.permissions);
        CopyPassword(options.upwd_utf8, encryption.user_password);
        CopyPassword(options.opwd_utf8, encryption.owner_password);
    } else {
        options.do_encrypt = PDF_ENCRYPT_NONE;
    }
    return options;
}

}  // namespace

Document PdfFactory::Build(const PdfDescription& recipe) const {
    if (recipe.pages.empty())
        throw Error(std::string(kWhat) + ": no pages");
    fz_context* ctx = context_.get();
    Document document(context_, CallMupdf(ctx, kWhat, [&] { return pdf_create_document(ctx); }), {},
                      permission::kAll);
    PageBuilder builder(ctx, document.pdf());
    for (const PageDescription& page : recipe.pages)
        builder.Add(page);
    for (const auto& [key, value] : recipe.info)
        PutInfoString(ctx, document.pdf(), key, value);
    document.IndexPages();
    return document;
}

void PdfFactory::Write(const PdfDescription& recipe, const std::string& path) const {
    const pdf_write_options options = WriteOptions(recipe);
    Document document = Build(recipe);
    SaveReplacing(context_.get(), document.pdf(), path, options);
}

}  // namespace pdfhost::engine
