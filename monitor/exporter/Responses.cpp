#include "monitor/exporter/Responses.hpp"

#include <new>
#include <utility>

namespace halvermonte {
namespace {

using Owner = std::shared_ptr<const void>;

void release(void* owner) { delete static_cast<Owner*>(owner); }

}  // namespace

Response withHeaders(MHD_Response* response, const char* type) {
  if (response == nullptr) throw std::bad_alloc();
  MHD_add_response_header(response, MHD_HTTP_HEADER_CONTENT_TYPE, type);
  MHD_add_response_header(response, MHD_HTTP_HEADER_CACHE_CONTROL, "no-store");
  MHD_add_response_header(response, "X-Content-Type-Options", "nosniff");
  return Response(response);
}

Response responseOf(std::string_view text, const char* type, Owner owner) {
  auto kept = std::make_unique<Owner>(std::move(owner));
  MHD_Response* const response = MHD_create_response_from_buffer_with_free_callback_cls(
      text.size(), const_cast<char*>(text.data()), release, kept.get());
  if (response != nullptr) static_cast<void>(kept.release());
  return withHeaders(response, type);
}

Response responseOfCopy(const std::string& text, const char* type) {
  const auto copy = std::make_shared<const std::string>(text);
  return responseOf(*copy, type, copy);
}

}  // namespace halvermonte
