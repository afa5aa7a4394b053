#pragma once

#include <curl/curl.h>

#include <memory>

namespace lumora {

struct CurlDeleter {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};

/// One transfer, in curl's terms an easy handle.
using CurlTransfer = std::unique_ptr<CURL, CurlDeleter>;

struct CurlMultiDeleter {
    void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
};

/// What runs transfers beside each other, in curl's terms a multi handle.
using CurlTransfers = std::unique_ptr<CURLM, CurlMultiDeleter>;

struct CurlListDeleter {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

/// A list of lines, such as those of a request's head.
using CurlLines = std::unique_ptr<curl_slist, CurlListDeleter>;

} // namespace lumora
