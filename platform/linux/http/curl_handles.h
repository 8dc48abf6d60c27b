#pragma once

#include <curl/curl.h>

#include <memory>

namespace notewick {

template <auto FREE>
struct CurlFreed {
  template <class T>
  void operator()(T* handle) const {
    FREE(handle);
  }
};

/// Owners of libcurl's handles.
using CurlEasy = std::unique_ptr<CURL, CurlFreed<curl_easy_cleanup>>;
using CurlMulti = std::unique_ptr<CURLM, CurlFreed<curl_multi_cleanup>>;
using CurlList = std::unique_ptr<curl_slist, CurlFreed<curl_slist_free_all>>;

}  // namespace notewick
