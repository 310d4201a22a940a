// PdfDictWriter: sets the entries of a PDF dictionary through the host, in the order called.
// Arrays are made by the host and handed over to the dictionary; texts are encoded by the host as
// PDF text strings.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "host/host_api.h"

class PdfDictWriter {
  public:
    PdfDictWriter(HostApi& host, NdxDoc pdf, NdxObject dict)
        : host_(host), pdf_(pdf), dict_(dict) {}

    void Name(const char* key, const char* name);
    void Rect(const char* key, const NdxRect& rect);
    void Integer(const char* key, int value);
    void Numbers(const char* key, const std::vector<float>& numbers);
    void Numbers(const char* key, std::initializer_list<float> numbers) {
        Numbers(key, std::vector<float>(numbers));
    }
    void Text(const char* key, const std::wstring& text);
    void Reference(const char* key, NdxObject target);

  private:
    HostApi& host_;
    NdxDoc pdf_;
    NdxObject dict_;
};
