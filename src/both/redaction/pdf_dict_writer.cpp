#include "pdf_dict_writer.h"

#include "host/host_string.h"

void PdfDictWriter::Name(const char* key, const char* name) {
    host_.NDXDictSetName(dict_, key, name);
}

void PdfDictWriter::Rect(const char* key, const NdxRect& rect) {
    host_.NDXDictSetRect(dict_, key, rect);
}

void PdfDictWriter::Integer(const char* key, int value) {
    host_.NDXDictSetInteger(dict_, key, value);
}

// The array is filled only when the host made an array of it.
void PdfDictWriter::Numbers(const char* key, const std::vector<float>& numbers) {
    NdxObject array = host_.NDXArrayNew();
    if (array == nullptr)
        return;
    if (host_.NDXObjectGetType(array) == kNdxObjectArray) {
        for (float number : numbers)
            host_.NDXArrayAddNumber(array, number);
    }
    host_.NDXDictSetObject(dict_, key, array, pdf_);
}

void PdfDictWriter::Text(const char* key, const std::wstring& text) {
    HostBytes bytes(host_);
    host_.HostTextToPdfString(text.c_str(), static_cast<int>(text.size()), 0, bytes);
    host_.NDXDictSetString(dict_, key, bytes);
}

void PdfDictWriter::Reference(const char* key, NdxObject target) {
    host_.NDXDictSetReference(dict_, key, pdf_, target);
}
