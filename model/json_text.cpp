#include "model/json_text.h"

#include <cmath>
#include <utility>
#include <vector>

#include "model/integers.h"

namespace notewick {
namespace {

using nlohmann::json;

/// Builds the document from the events of the library's parser, whose own builder gives every
/// number with a point or an exponent as a double. An event answered by false ends the parsing.
class Builder : public nlohmann::json_sax<json> {
 public:
  [[nodiscard]] json document() && { return std::move(document_); }

  bool null() override { return add(nullptr); }
  bool boolean(bool value) override { return add(value); }
  bool number_integer(std::int64_t value) override { return add(value); }
  bool number_unsigned(std::uint64_t value) override { return add(value); }
  bool number_float(double value, const std::string& text) override {
    const auto whole = wholeNumberIn(text);
    if (!whole) return add(value == 0 ? 0.0 : value);  // too small for a double, not minus zero
    const bool minusZero = whole == 0 && std::signbit(value);
    return minusZero ? add(value) : add(*whole);
  }
  bool string(std::string& value) override { return add(std::move(value)); }
  bool binary(json::binary_t&) override { return false; }

  bool start_object(std::size_t) override { return open(json::object()); }
  bool key(std::string& name) override {
    key_ = std::move(name);
    return true;
  }
  bool end_object() override { return close(); }
  bool start_array(std::size_t) override { return open(json::array()); }
  bool end_array() override { return close(); }
  bool parse_error(std::size_t, const std::string&, const json::exception&) override {
    return false;
  }

 private:
  /// Puts a value where the text has it: under the last key, of a doubled one in the first's place.
  json& put(json value) {
    if (open_.empty()) return document_ = std::move(value);
    json& parent = *open_.back();
    if (parent.is_array()) return parent.emplace_back(std::move(value));
    return parent[key_] = std::move(value);
  }

  bool add(json value) {
    put(std::move(value));
    return true;
  }

  bool open(json container) {
    if (open_.size() == DEEPEST_NESTING) return false;
    open_.push_back(&put(std::move(container)));
    return true;
  }

  bool close() {
    open_.pop_back();
    return true;
  }

  json document_;
  std::string key_;
  std::vector<json*> open_;  ///< the containers whose end is still to come, outermost first
};

}  // namespace

std::optional<json> parseJson(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) return std::nullopt;  // would end it silently
  Builder builder;
  if (!json::sax_parse(text, &builder)) return std::nullopt;
  return std::move(builder).document();
}

}  // namespace notewick
