#include "tests/tools/local-service/test_world.h"

#include <cstdlib>
#include <stdexcept>

namespace notewick::service {

using nlohmann::json;

TemporaryFolder::TemporaryFolder() {
  auto name = (std::filesystem::temp_directory_path() / "local-service-XXXXXX").string();
  if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::filesystem::remove_all(path_);
}

TestWorld::TestWorld(ServiceSettings settings) : service(settings, clock.clock()) {
  const auto account = service.accounts().save(EMAIL, PASSWORD);
  service.accounts().saveParticipants(account, demonstrationParticipants());
}

httplib::Client TestWorld::client() const {
  const auto authority = service.authorityFile();
  httplib::Client client(std::string(authority ? "https" : "http") +
                         "://127.0.0.1:" + std::to_string(service.port()));
  if (authority) client.set_ca_cert_path(authority->string());
  client.set_read_timeout(30);
  return client;
}

httplib::Result TestWorld::get(const std::string& path, const std::string& accessToken) {
  return client().Get(path, {{"Authorization", "Bearer " + accessToken}});
}

httplib::Result TestWorld::post(const std::string& path, const std::string& body,
                                const std::string& accessToken) {
  return client().Post(path, {{"Authorization", "Bearer " + accessToken}}, body,
                       "application/json");
}

json TestWorld::signIn() {
  return jsonOf(
      post("/api/desktop/auth/login", json({{"email", EMAIL}, {"password", PASSWORD}}).dump()));
}

std::string TestWorld::accessToken() {
  return signIn().at("accessToken");
}

httplib::Result TestWorld::refresh(const std::string& refreshToken) {
  return post("/api/desktop/auth/refresh", json({{"refreshToken", refreshToken}}).dump());
}

httplib::Result TestWorld::capture(const std::string& accessToken, const std::string& input) {
  const json body = {{"participantId", "p-101"},
                     {"input", input},
                     {"durationMinutes", 30},
                     {"sessionDate", "2026-03-05"}};
  return post("/api/desktop/case-notes/capture", body.dump(), accessToken);
}

httplib::Headers TestWorld::browserCookie() {
  const auto answer =
      client().Post("/login", httplib::Params{{"email", EMAIL}, {"password", PASSWORD}});
  const auto cookie = answer->get_header_value("Set-Cookie");
  return {{"Cookie", cookie.substr(0, cookie.find(';'))}};
}

json jsonOf(const httplib::Result& result) {
  if (!result) return nullptr;
  auto body = json::parse(result->body, nullptr, false);
  return body.is_discarded() ? json(nullptr) : body;
}

int statusOf(const httplib::Result& result) {
  return result ? result->status : 0;
}

}  // namespace notewick::service
