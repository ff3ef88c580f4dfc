#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace korvantis {

/// One request (`NSMutableURLRequest`). All texts are UTF-8.
struct HTTPRequest {
  std::string url;
  std::string method = "GET";
  std::vector<std::pair<std::string, std::string>> headers;
  /// Absent: the request has no body.
  std::optional<std::string> body;
  /// The whole exchange may take this long.
  double timeoutSeconds = 60;
};

/// How a request ended. The answer's body is not kept.
struct HTTPAnswer {
  /// Why there was no answer, for the user's eyes. It never holds any part of the URL, which can
  /// carry a secret. Absent when there was an answer.
  std::optional<std::string> error;
  /// The status of the answer; absent when the answer was not HTTP.
  std::optional<int> statusCode;
};

/// Requests to web servers (`NSURLSession`). Any thread.
struct HTTPCalls {
  /// Sends a request and waits for the end of its answer (`data(for:)`). Holds the calling thread
  /// up to the request's time limit. A redirect is an answer like any other: it is not followed.
  std::function<HTTPAnswer(const HTTPRequest& request)> dataForRequest = [](const HTTPRequest&) {
    return HTTPAnswer{.error = "There is no network.", .statusCode = {}};
  };
};

/// Requests over HTTP and HTTPS, through the proxies that the environment names. Each request is on
/// its own and sent once: no cookies, no cache, no connection is kept. A certificate that the
/// system does not trust is an error.
HTTPCalls systemHTTPCalls();

}  // namespace korvantis
