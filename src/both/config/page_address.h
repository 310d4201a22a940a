// The address of the page: the template from the service document with the environment's values
// put into its placeholders, then the parameters every load appends. The developers' custom_url
// replaces the result.
#pragma once

#include <string>

class Brevan;

enum class PageDialogKind { TaskPane, Batch };

// Fills `url`. When the service document gives no template, `url` is left as it was.
void BuildPageUrl(Brevan& app, PageDialogKind kind, std::wstring& url);

// Replaces every `key` + "=%s" in `url` by `key` + "=" + `value`; the inserted text is not
// searched again. False when `url` holds no such placeholder.
bool FillPlaceholder(std::wstring& url, const std::wstring& key, const std::wstring& value);
