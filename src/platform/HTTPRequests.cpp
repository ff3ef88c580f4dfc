#include <algorithm>
#include <cmath>
#include <curl/curl.h>
#include <memory>
#include <mutex>

#include "platform/HTTPCalls.h"

namespace korvantis {
namespace {

using EasyHandle = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using URLHandle = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;
using HeaderList = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

/// Words of our own: the library's hold the host's name.
const char* errorText(CURLcode code) {
  switch (code) {
    case CURLE_COULDNT_CONNECT: return "Could not connect to the server.";
    case CURLE_COULDNT_RESOLVE_HOST: return "The server could not be found.";
    case CURLE_OPERATION_TIMEDOUT: return "The request timed out.";
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_PROXY: return "The proxy server could not be used.";
    case CURLE_PEER_FAILED_VERIFICATION:
      return "No secure connection to the server: its certificate is not trusted.";
    case CURLE_SSL_CONNECT_ERROR: return "No secure connection to the server.";
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR: return "The network connection was lost.";
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY: return "The server's answer could not be understood.";
    default: return "The network request failed.";
  }
}

/// The library must be set up before two threads use it.
void setUpOnce() {
  static std::once_flag isSetUp;
  std::call_once(isSetUp, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

/// Null for what is no URL of the web. No scheme is guessed.
URLHandle parsed(const std::string& text) {
  URLHandle url(curl_url(), &curl_url_cleanup);
  if (url && curl_url_set(url.get(), CURLUPART_URL, text.c_str(), CURLU_URLENCODE) != CURLUE_OK)
    url.reset();
  return url;
}

HeaderList headerList(const HTTPRequest& request) {
  HeaderList list(nullptr, &curl_slist_free_all);
  for (const auto& [name, value] : request.headers) {
    curl_slist* const longer = curl_slist_append(list.get(), (name + ": " + value).c_str());
    if (longer == nullptr) continue;
    static_cast<void>(list.release());
    list.reset(longer);
  }
  return list;
}

std::size_t discard(char*, std::size_t size, std::size_t count, void*) {
  return size * count;
}

template <typename Value>
void set(const EasyHandle& handle, CURLoption option, Value value) {
  // An option that this build of the library lacks is one that it needs no turning off.
  static_cast<void>(curl_easy_setopt(handle.get(), option, value));
}

/// The body must live as long as the handle.
void setBody(const EasyHandle& handle, const HTTPRequest& request) {
  if (request.method == "GET" && !request.body) return;
  const char* const bytes = request.body ? request.body->data() : "";
  const std::size_t size = request.body ? request.body->size() : 0;
  set(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(size));
  set(handle, CURLOPT_POSTFIELDS, bytes);
  set(handle, CURLOPT_CUSTOMREQUEST, request.method.c_str());
}

long milliseconds(double seconds) {
  return static_cast<long>(std::ceil(std::clamp(seconds, 0.001, 86400.0) * 1000));
}

/// A connection of its own each time: the library tries a request again only on a kept one.
HTTPAnswer dataForRequest(const HTTPRequest& request) {
  setUpOnce();
  const URLHandle url = parsed(request.url);
  if (!url) return {.error = "Unsupported URL.", .statusCode = {}};
  const EasyHandle handle(curl_easy_init(), &curl_easy_cleanup);
  if (!handle) return {.error = errorText(CURLE_FAILED_INIT), .statusCode = {}};
  const HeaderList headers = headerList(request);
  set(handle, CURLOPT_CURLU, url.get());
  set(handle, CURLOPT_PROTOCOLS_STR, "http,https");
  set(handle, CURLOPT_HTTPHEADER, headers.get());
  set(handle, CURLOPT_TIMEOUT_MS, milliseconds(request.timeoutSeconds));
  set(handle, CURLOPT_NOSIGNAL, 1L);
  // A name server that does not answer must not hold the thread beyond the time limit.
  set(handle, CURLOPT_QUICK_EXIT, 1L);
  set(handle, CURLOPT_FOLLOWLOCATION, 0L);
  set(handle, CURLOPT_WRITEFUNCTION, &discard);
  setBody(handle, request);
  const CURLcode code = curl_easy_perform(handle.get());
  if (code != CURLE_OK) return {.error = errorText(code), .statusCode = {}};
  long status = 0;
  curl_easy_getinfo(handle.get(), CURLINFO_RESPONSE_CODE, &status);
  return {.error = {},
          .statusCode = status != 0 ? std::optional(static_cast<int>(status)) : std::nullopt};
}

}  // namespace

HTTPCalls systemHTTPCalls() {
  return {dataForRequest};
}

}  // namespace korvantis
