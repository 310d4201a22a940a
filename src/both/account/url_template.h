// Fills a text template that the web service hands out, the way a printf format takes text
// arguments: each "%s" (also "%ls" and "%S") takes the next text, "%%" is one "%". Any other
// "%" sequence stays as it stands, and a placeholder beyond the texts given takes the empty text,
// so a template from the network can never read past what it was given.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

std::wstring FillTemplate(std::wstring_view pattern,
                          std::initializer_list<std::wstring_view> texts);
