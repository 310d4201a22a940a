// Classifies a document by the content of its pages: whether they hold images only, a mix, or no
// image at all. Paths are neutral; text, shadings, forms and other objects mark a page as born
// digital.
#pragma once

#include "host/host_api.h"

enum class DocImagesType : int {
    kNoImage = 0,
    kAllImages = 1,  // also an empty document
    kMixed = 2,
};

DocImagesType ClassifyDocImages(HostApi& host, HostDoc doc);
