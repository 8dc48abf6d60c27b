#include "platform/linux/x11/x11_property.h"

#include <algorithm>
#include <cstring>

#include "platform/linux/titles/title_text.h"

namespace notewick {
namespace {

TextEncoding encodingOf(const X11Property& text) {
  if (text.type == X11Atom::string) return TextEncoding::latin1;
  if (text.type == X11Atom::compoundText) return TextEncoding::compoundText;
  return TextEncoding::utf8;
}

}  // namespace

std::vector<std::uint32_t> X11Property::numbers() const {
  std::vector<std::uint32_t> values(bytes.size() / sizeof(std::uint32_t));
  if (bitsPerUnit != 32 || values.empty()) return {};
  std::memcpy(values.data(), bytes.data(), values.size() * sizeof(std::uint32_t));
  return values;
}

std::optional<std::uint32_t> X11Property::firstNumber() const {
  const auto values = numbers();
  if (values.empty()) return std::nullopt;
  return values.front();
}

bool isGone(X11Properties properties) {
  return std::any_of(properties.begin(), properties.end(),
                     [](const auto& property) { return !property; });
}

// NOLINTBEGIN(bugprone-unchecked-optional-access): where nothing is gone everything is there
std::optional<std::string> titleIn(X11Properties properties) {
  if (isGone(properties)) return std::nullopt;
  for (const auto& property : properties) {
    if (property->bitsPerUnit == 8) return decodedText(property->bytes, encodingOf(*property));
  }
  return "";
}

std::optional<X11WindowIdentity> identityIn(std::uint32_t client, X11Properties properties) {
  if (isGone(properties)) return std::nullopt;
  return X11WindowIdentity{client, properties[0]->firstNumber(), properties[1]->bytes,
                           properties[2]->bytes, properties[3]->firstNumber()};
}
// NOLINTEND(bugprone-unchecked-optional-access)

}  // namespace notewick
