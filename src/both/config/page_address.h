// The address of the page: the template from the service document with the environment's values
// put into its placeholders, then the parameters every load appends. The developers' custom_url
// replaces the result.
#pragma once

#include <string>

#include "host/host_api.h"

class AsyncLogger;
class BrevanConfig;
class ServiceConfig;

enum class PageDialogKind { TaskPane, Batch };

// Fills `url`. Without the configuration or the service document (null), or when the service
// document gives no template, `url` is left as it was. `accountPage` opens the task pane's page
// on the account.
void BuildPageUrl(HostApi& host, const BrevanConfig* config, ServiceConfig* service,
                  bool accountPage, PageDialogKind kind, std::wstring& url);

// Logs that a page dialog of `kind` (re)loads its page at `url`.
void LogPageReload(AsyncLogger& logger, PageDialogKind kind, const std::wstring& url);

// Replaces every `key` + "=%s" in `url` by `key` + "=" + `value`; the inserted text is not
// searched again. False when `url` holds no such placeholder.
bool FillPlaceholder(std::wstring& url, const std::wstring& key, const std::wstring& value);
