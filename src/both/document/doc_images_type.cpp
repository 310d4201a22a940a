#include "doc_images_type.h"

DocImagesType ClassifyDocImages(HostApi& host, HostDoc doc) {
    NdxDoc pdf = host.HostDocGetPdfDoc(doc);
    if (pdf == nullptr)
        return DocImagesType::kNoImage;
    const int pageCount = host.NDXDocGetPageCount(pdf);
    if (pageCount <= 0)
        return DocImagesType::kAllImages;

    bool allImage = true;
    bool anyImage = false;
    for (int index = 0; index < pageCount; ++index) {
        HostPageView view = host.HostDocGetPageView(doc, index);
        NdxPage page = view != nullptr ? host.HostPageViewGetPage(view) : nullptr;
        if (page == nullptr)
            continue;
        if (host.NDXPageIsParsed(page) == 0)
            host.NDXPageParse(page, nullptr);
        if (host.NDXPageCountObjects(page) == 0) {
            allImage = false;
            continue;
        }
        bool onlyImages = true;
        bool hasImage = false;
        NdxPosition position = host.NDXPageGetFirstObjectPos(page);
        while (position != nullptr) {
            NdxPageObject object = host.NDXPageGetNextObject(page, &position);
            if (object == nullptr)
                break;
            switch (host.NDXPageObjectGetType(object)) {
                case kNdxPageObjectImage:
                    hasImage = true;
                    break;
                case kNdxPageObjectPath:
                    break;
                default:  // text, shading, form and anything else
                    onlyImages = false;
                    break;
            }
        }
        allImage = allImage && onlyImages;
        anyImage = anyImage || hasImage;
    }
    if (allImage)
        return DocImagesType::kAllImages;
    return anyImage ? DocImagesType::kMixed : DocImagesType::kNoImage;
}
