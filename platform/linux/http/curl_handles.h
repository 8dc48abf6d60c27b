#pragma once

#include <curl/curl.h>

#include <memory>

#include "platform/freed.h"

namespace notewick {

/// Owners of libcurl's handles.
using CurlEasy = std::unique_ptr<CURL, Freed<curl_easy_cleanup>>;
using CurlMulti = std::unique_ptr<CURLM, Freed<curl_multi_cleanup>>;
using CurlShare = std::unique_ptr<CURLSH, Freed<curl_share_cleanup>>;
using CurlList = std::unique_ptr<curl_slist, Freed<curl_slist_free_all>>;

}  // namespace notewick
