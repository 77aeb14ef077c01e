// Bytes as text.
#pragma once

#include <string>
#include <string_view>

namespace app {

std::string inBase64(std::string_view bytes);

}  // namespace app
