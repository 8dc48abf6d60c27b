// Any program can set any property of its windows, of any type, size and format. Each property is a
// byte for its type, one for its format and the value, one on a line.
#include <utf8proc.h>

#include "fuzz/targets.h"
#include "platform/linux/titles/title_text.h"
#include "platform/linux/x11/x11_property.h"

namespace notewick::fuzz {
namespace {

constexpr char SEPARATOR = '\n';

std::optional<X11Property> propertyFrom(const std::string& part) {
  constexpr int FORMATS[] = {0, 8, 16, 32};
  if (part.size() < 2) return std::nullopt;
  X11Property property;
  const auto type = static_cast<unsigned char>(part[0]) % 16;
  if (type <= static_cast<int>(X11Atom::string)) property.type = static_cast<X11Atom>(type);
  property.bitsPerUnit = FORMATS[static_cast<unsigned char>(part[1]) % 4];
  property.bytes = part.substr(2);
  return property;
}

std::size_t characters(const std::string& utf8) {
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(utf8.data());
  std::size_t count = 0;
  for (std::size_t place = 0; place < utf8.size(); ++count) {
    utf8proc_int32_t character = 0;
    const auto left = static_cast<utf8proc_ssize_t>(utf8.size() - place);
    const auto length = utf8proc_iterate(bytes + place, left, &character);
    require(length > 0, "Latin-1 becomes UTF-8");
    place += static_cast<std::size_t>(length);
  }
  return count;
}

void decode(std::string_view bytes) {
  const auto text = bytes.substr(0, bytes.find('\0'));
  require(decodedText(bytes, TextEncoding::utf8) == text, "UTF-8 is passed on up to a NUL");
  const auto latin1 = decodedText(bytes, TextEncoding::latin1);
  require(characters(latin1) == text.size(), "each byte of Latin-1 is a character");
  const auto compound = decodedText(bytes, TextEncoding::compoundText);
  if (text.find('\x1b') != std::string_view::npos) return;
  require(compound == latin1, "compound text without escapes is Latin-1");
  const std::string inUtf8 = "\x1b%G" + std::string(text) + "\x1b%@";
  require(decodedText(inUtf8, TextEncoding::compoundText) == text, "a UTF-8 segment is itself");
}

}  // namespace

void x11(std::string_view bytes) {
  std::vector<std::optional<X11Property>> properties;
  for (const auto& part : parts(bytes, SEPARATOR)) properties.push_back(propertyFrom(part));
  properties.resize(IDENTITY_PROPERTIES.size());
  const auto title = titleIn(X11Properties(properties).first(TITLE_PROPERTIES.size()));
  require(!title || (properties[0] && properties[1]), "a window that is gone has no title");
  const auto identity = identityIn(0x600000, properties);
  if (identity) {
    require(isSameApplication(*identity, *identity), "a window belongs to its own program");
    require(identity->wmClass.find(classPart(identity->wmClass)) != std::string::npos,
            "the class is a part of WM_CLASS");
  }
  decode(bytes);
}

}  // namespace notewick::fuzz
