// Answers for libmicrohttpd.
#pragma once

#include <microhttpd.h>

#include <memory>
#include <string>
#include <string_view>

namespace halvermonte {

struct DestroyResponse {
  void operator()(MHD_Response* response) const { MHD_destroy_response(response); }
};
using Response = std::unique_ptr<MHD_Response, DestroyResponse>;

inline constexpr const char* kMetricsType = "text/plain; version=0.0.4; charset=utf-8";
inline constexpr const char* kJsonType = "application/json";
inline constexpr const char* kPageType = "text/html; charset=utf-8";
inline constexpr const char* kPlainType = "text/plain; charset=utf-8";

/// Adds the headers that every answer has. Throws std::bad_alloc if there is no response.
Response withHeaders(MHD_Response* response, const char* type);

/// The characters, which are not copied: `owner` keeps them alive until the last client has them.
Response responseOf(std::string_view text, const char* type,
                    std::shared_ptr<const void> owner = nullptr);
/// A copy of the text.
Response responseOfCopy(const std::string& text, const char* type);

}  // namespace halvermonte
