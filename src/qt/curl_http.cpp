#include "curl_http.h"

#include <curl/curl.h>

#include <chrono>
#include <vector>

#include "util/utf.h"

namespace {

constexpr const wchar_t* kDefaultUserAgent = L"Tarvo Tethrix DRM Plug-in 1.0";
constexpr long kConnectTimeoutMs = 2000;
constexpr auto kStallLimit = std::chrono::milliseconds(2000);
// A body kept in memory beyond this size fails the request instead of exhausting memory.
constexpr std::size_t kMaxKeptBody = 64u << 20;

// libcurl's process-wide state, set up before the first transfer and released at unload.
class CurlGlobal {
  public:
    static void Ensure() { static CurlGlobal global; }
    CurlGlobal(const CurlGlobal&) = delete;
    CurlGlobal& operator=(const CurlGlobal&) = delete;

  private:
    CurlGlobal() { curl_global_init(CURL_GLOBAL_DEFAULT); }
    ~CurlGlobal() { curl_global_cleanup(); }
};

struct EasyDeleter {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct ListDeleter {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using EasyHandle = std::unique_ptr<CURL, EasyDeleter>;
using HeaderList = std::unique_ptr<curl_slist, ListDeleter>;

bool Append(HeaderList& list, const std::string& line) {
    curl_slist* grown = curl_slist_append(list.get(), line.c_str());
    if (grown == nullptr)
        return false;
    list.release();
    list.reset(grown);
    return true;
}

// Splits "\r\n"-separated header lines; false when a non-empty line is not "Name: value".
bool SplitHeaderLines(const std::string& text, std::vector<std::string>& lines) {
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = text.find("\r\n", start);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(start, end - start);
        if (!line.empty()) {
            const std::size_t colon = line.find(':');
            if (colon == 0 || colon == std::string::npos ||
                line.find_first_of("\r\n") != std::string::npos) {
                return false;
            }
            lines.push_back(std::move(line));
        }
        start = end + 2;
    }
    return true;
}

bool HasHeader(const curl_slist* list, std::string_view name) {
    for (; list != nullptr; list = list->next) {
        const std::string_view line(list->data);
        if (line.size() > name.size() && line[name.size()] == ':' &&
            curl_strnequal(line.data(), name.data(), name.size()) != 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

// The libcurl handle of one request and what its callbacks need.
class CurlHttp::Transfer {
  public:
    Transfer() : easy_(curl_easy_init()) {}

    CURL* easy() const { return easy_.get(); }
    HeaderList& headers() { return headers_; }

    // Runs the request; the body goes to `sink`. Returns the libcurl result and sets `status`.
    CURLcode Perform(HttpBodySink& sink, long& status) {
        sink_ = &sink;
        curl_easy_setopt(easy(), CURLOPT_HTTPHEADER, headers_.get());
        curl_easy_setopt(easy(), CURLOPT_WRITEFUNCTION, &Transfer::OnWrite);
        curl_easy_setopt(easy(), CURLOPT_WRITEDATA, this);
        curl_easy_setopt(easy(), CURLOPT_PREREQFUNCTION, &Transfer::OnConnected);
        curl_easy_setopt(easy(), CURLOPT_PREREQDATA, this);
        curl_easy_setopt(easy(), CURLOPT_XFERINFOFUNCTION, &Transfer::OnProgress);
        curl_easy_setopt(easy(), CURLOPT_XFERINFODATA, this);
        curl_easy_setopt(easy(), CURLOPT_NOPROGRESS, 0L);
        CURLcode result = curl_easy_perform(easy());
        curl_easy_getinfo(easy(), CURLINFO_RESPONSE_CODE, &status);
        // An empty body is written by no callback; the sink still learns that it began.
        if (result == CURLE_OK && status == 200 && !begun_ && !Begin())
            result = CURLE_WRITE_ERROR;
        sink_ = nullptr;
        return result;
    }

  private:
    bool Begin() {
        begun_ = true;
        curl_off_t length = -1;
        curl_easy_getinfo(easy(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
        return sink_->Begin(length > 0 ? static_cast<std::uint64_t>(length) : 0);
    }

    static std::size_t OnWrite(char* data, std::size_t size, std::size_t count, void* self) {
        auto& t = *static_cast<Transfer*>(self);
        if (!t.begun_) {
            // Only the body of a 200 answer is taken; any other stops the transfer here.
            long status = 0;
            curl_easy_getinfo(t.easy(), CURLINFO_RESPONSE_CODE, &status);
            if (status != 200 || !t.Begin())
                return CURL_WRITEFUNC_ERROR;
        }
        return t.sink_->Write(std::string_view(data, size * count)) ? size * count
                                                                    : CURL_WRITEFUNC_ERROR;
    }

    // The stall clock starts once the connection stands, so resolving and connecting keep their
    // own limit.
    static int OnConnected(void* self, char*, char*, int, int) {
        auto& t = *static_cast<Transfer*>(self);
        t.connected_ = true;
        t.lastMove_ = std::chrono::steady_clock::now();
        return CURL_PREREQFUNC_OK;
    }

    static int OnProgress(void* self, curl_off_t, curl_off_t downloaded, curl_off_t,
                          curl_off_t uploaded) {
        auto& t = *static_cast<Transfer*>(self);
        if (!t.connected_)
            return 0;
        const auto now = std::chrono::steady_clock::now();
        const curl_off_t moved = downloaded + uploaded;
        if (moved != t.moved_) {
            t.moved_ = moved;
            t.lastMove_ = now;
            return 0;
        }
        return now - t.lastMove_ >= kStallLimit ? 1 : 0;
    }

    EasyHandle easy_;
    HeaderList headers_;
    HttpBodySink* sink_ = nullptr;
    bool begun_ = false;
    bool connected_ = false;
    curl_off_t moved_ = 0;
    std::chrono::steady_clock::time_point lastMove_;
};

namespace {

// Keeps the body in memory, up to a limit.
class KeptBody final : public HttpBodySink {
  public:
    explicit KeptBody(std::string& body) : body_(body) {}
    bool Begin(std::uint64_t) override { return true; }
    bool Write(std::string_view piece) override {
        if (body_.size() + piece.size() > kMaxKeptBody)
            return false;
        body_.append(piece);
        return true;
    }

  private:
    std::string& body_;
};

}  // namespace

CurlHttp::CurlHttp(const std::wstring& url, const std::wstring& userAgent,
                   const HttpSettings& settings)
    : urlParts_(url),
      userAgent_(userAgent.empty() ? kDefaultUserAgent : userAgent),
      settings_(settings) {
    if (!urlParts_.IsValid())
        return;
    CurlGlobal::Ensure();
    auto transfer = std::make_unique<Transfer>();
    CURL* easy = transfer->easy();
    if (easy == nullptr)
        return;
    const std::string address = urlParts_.RequestUrl();
    const std::string agent = ToUtf8(userAgent_);
    const bool configured =
        curl_easy_setopt(easy, CURLOPT_URL, address.c_str()) == CURLE_OK &&
        curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https") == CURLE_OK &&
        curl_easy_setopt(easy, CURLOPT_USERAGENT, agent.c_str()) == CURLE_OK &&
        curl_easy_setopt(easy, CURLOPT_HTTPGET, 1L) == CURLE_OK &&
        curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L) == CURLE_OK &&
        curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L) == CURLE_OK &&
        curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, kConnectTimeoutMs) == CURLE_OK &&
        curl_easy_setopt(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L) == CURLE_OK &&
        curl_easy_setopt(easy, CURLOPT_SSLVERSION, CURL_SSLVERSION_TLSv1_2) == CURLE_OK &&
        curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, settings_.verifyCertificates ? 1L : 0L) ==
            CURLE_OK &&
        curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, settings_.verifyCertificates ? 2L : 0L) ==
            CURLE_OK;
    if (!configured)
        return;
    if (!urlParts_.IsSecure() && (!Append(transfer->headers(), "Pragma: no-cache") ||
                                  !Append(transfer->headers(), "Cache-Control: no-cache"))) {
        return;
    }
    transfer_ = std::move(transfer);
}

CurlHttp::~CurlHttp() = default;

bool CurlHttp::AddHeaders(const std::wstring& headers) {
    if (!transfer_)
        return false;
    std::vector<std::string> lines;
    if (!SplitHeaderLines(ToUtf8(headers), lines))
        return false;
    HeaderList& list = transfer_->headers();
    for (const std::string& line : lines) {
        if (!Append(list, line))
            return false;
    }
    return true;
}

bool CurlHttp::Send(std::string_view data) {
    if (!transfer_ || sent_)
        return false;
    sent_ = true;
    CURL* easy = transfer_->easy();
    if (!data.empty()) {
        // A GET that carries a body, as the caller asked; libcurl's form type is not added.
        if (!HasHeader(transfer_->headers().get(), "Content-Type") &&
            !Append(transfer_->headers(), "Content-Type:")) {
            return false;
        }
        curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(data.size()));
        curl_easy_setopt(easy, CURLOPT_COPYPOSTFIELDS, data.data());
        curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, "GET");
    }
    KeptBody kept(body_);
    HttpBodySink& sink = sink_ != nullptr ? *sink_ : kept;
    const CURLcode result = transfer_->Perform(sink, status_);
    if (result != CURLE_OK || status_ != 200) {
        body_.clear();
        return false;
    }
    return true;
}

void CurlHttp::ReadBody(std::string& body) const {
    body = body_;
}

int HttpGet(const std::wstring& url, std::string& out, const HttpSettings& settings) {
    CurlHttp http(url, L"", settings);
    if (!http.Send())
        return 3;
    std::string body;
    http.ReadBody(body);
    if (body.empty())
        return 3;
    out = std::move(body);
    return 0;
}
