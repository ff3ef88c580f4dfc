#pragma once

#include "platform/HTTPCalls.h"

namespace korvantis {

/// Requests over HTTP and HTTPS, through the desktop's proxies. Each request is on its own: no
/// cookies, no cache, no connection is kept. A certificate that the system does not trust is an
/// error.
HTTPCalls qtHTTPCalls();

}  // namespace korvantis
