// Reply texts are UTF-8 as written and wide text on the bridge. A file block's reply is megabytes
// of base64, so this is on the upload's hot path.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

// The wide text of the pieces read one after another. Pieces split the text between characters.
std::wstring WidenReply(std::initializer_list<std::string_view> pieces);
