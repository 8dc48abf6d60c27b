#include "tests/client/service_answers.h"

namespace notewick {
namespace {

using Body = std::optional<std::string>;
using Outcome = FakeService::Outcome;

const Ending SUCCESS = {Ending::Kind::success, ""};
const Ending SESSION_EXPIRED = {Ending::Kind::sessionExpired,
                                "Session expired — please sign in again"};

Ending api(const std::string& text) {
  return {Ending::Kind::api, text};
}

Ending network(const std::string& text) {
  return {Ending::Kind::network, text};
}

const Ending MALFORMED = api("Malformed participants response");
const Ending AUTHORISATION_EXPIRED = network("Authorisation expired — will retry");

std::string coded(const std::string& text, int status) {
  return text + " (" + std::to_string(status) + ")";
}

Outcome answered(int status, Body body) {
  return HttpResponse{status, std::move(body)};
}

// --- Rows ----------------------------------------------------------------------------------------

/// A status that is final, without a reason that can be read.
ServiceAnswer refused(int status, const std::string& shape = "", Body body = std::nullopt) {
  const Ending refusal = api(coded("Request failed", status));
  return {"Status" + std::to_string(status) + shape,
          answered(status, std::move(body)),
          api(coded("Sign-in failed", status)),
          network(coded("Refresh failed", status)),
          refusal,
          refusal};
}

/// A status that passes, without a reason that can be read.
ServiceAnswer busy(int status, const std::string& shape = "", Body body = std::nullopt) {
  const Ending trouble = network(coded("Server busy", status));
  return {"Status" + std::to_string(status) + shape,
          answered(status, std::move(body)),
          api(coded("Sign-in failed", status)),
          network(coded("Refresh failed", status)),
          trouble,
          trouble};
}

/// A status that is final, with a reason.
ServiceAnswer refusedSaying(int status, const std::string& shape, const std::string& body,
                            const std::string& reason) {
  return {"Status" + std::to_string(status) + shape,
          answered(status, body),
          api(reason),
          network(reason),
          api(reason),
          api(reason)};
}

/// A status that passes, with a reason.
ServiceAnswer busySaying(int status, const std::string& shape, const std::string& body,
                         const std::string& reason) {
  return {"Status" + std::to_string(status) + shape,
          answered(status, body),
          api(reason),
          network(reason),
          network(reason),
          network(reason)};
}

/// 200 without both tokens.
ServiceAnswer tokenless(const std::string& shape, Body body, const Ending& participants = MALFORMED,
                        std::vector<std::string> names = {}) {
  return {"Ok" + shape,
          answered(200, std::move(body)),
          api("Sign-in failed (200)"),
          network("Refresh failed (200)"),
          participants,
          SUCCESS,
          std::move(names)};
}

/// 200 with tokens, with or without participants.
ServiceAnswer withTokens(const std::string& shape, const std::string& body,
                         const Ending& participants, std::vector<std::string> names = {}) {
  return {"Ok" + shape, answered(200, body), SUCCESS, SUCCESS, participants,
          SUCCESS,      std::move(names)};
}

/// No answer, for this reason.
ServiceAnswer unanswered(const std::string& name, const std::string& reason) {
  return {name,
          tl::unexpected(TransportError{reason}),
          network(reason),
          network(reason),
          network(reason),
          network(reason)};
}

ServiceAnswer late(double seconds, ServiceAnswer answer) {
  answer.delay = seconds;
  answer.name += "After" + std::to_string(int(seconds)) + "Seconds";
  return answer;
}

// --- The list ------------------------------------------------------------------------------------

const std::string TOKENS = R"("accessToken":"A","refreshToken":"R")";
const std::string ALL = "{" + TOKENS +
                        R"(,"expiresAt":4102444800,"capturedId":"N","participants":[
    {"id":"1","first_name":"Zoe","last_name":"Abel"}]})";

std::vector<ServiceAnswer> successes() {
  return {
      withTokens("Complete", ALL, SUCCESS, {"Zoe Abel"}),
      withTokens("WithAnErrorToo", "{\"error\":\"x\"," + ALL.substr(1), SUCCESS, {"Zoe Abel"}),
      withTokens("AfterAByteOrderMark", "\xEF\xBB\xBF" + ALL, SUCCESS, {"Zoe Abel"}),
      withTokens("AmongBlanks", std::string(100'000, ' ') + ALL + "\r\n\t", SUCCESS, {"Zoe Abel"}),
      withTokens("TokensOnly", "{" + TOKENS + "}", MALFORMED),
      withTokens("TokensTwice", R"({"accessToken":7,"refreshToken":"Q",)" + TOKENS + "}",
                 MALFORMED),
      withTokens("IdThatIsNoText", "{" + TOKENS + R"(,"capturedId":42,"participants":[]})",
                 SUCCESS),
      withTokens("UnknownKeys", "{" + TOKENS + R"(,"x":{"y":[1,2,3]},"participants":[]})", SUCCESS),
  };
}

std::vector<ServiceAnswer> oddSuccesses() {
  const std::string deep = R"({"a":)" + std::string(600, '[') + std::string(600, ']') + "}";
  return {
      tokenless("WithoutBody", std::nullopt),
      tokenless("EmptyBody", ""),
      tokenless("EmptyObject", "{}"),
      tokenless("EmptyArray", "[]"),
      tokenless("ArrayOfObjects", "[" + ALL + "]"),
      tokenless("Null", "null"),
      tokenless("Number", "7"),
      tokenless("Boolean", "true"),
      tokenless("Text", R"("accessToken")"),
      tokenless("Html", "<html><body>Welcome to the hotel's network</body></html>"),
      tokenless("Cut", ALL.substr(0, ALL.size() / 2)),
      tokenless("CutByOneByte", ALL.substr(0, ALL.size() - 1)),
      tokenless("FollowedByMore", ALL + "x"),
      tokenless("NestedTooDeep", deep),
      tokenless("NestedInData", R"({"data":)" + ALL + "}"),
      tokenless("InvalidUtf8", "{\"x\":\"\xC3\x28\"," + ALL.substr(1)),
      tokenless("OtherEncoding", std::string("{\0}\0", 4)),
      tokenless("ZeroBytes", std::string(64, '\0')),
      tokenless("Compressed", "\x1f\x8b\x08"),
      tokenless("NumberTooLarge", R"({"expiresAt":1e999,)" + ALL.substr(1)),
      tokenless("AccessTokenOnly", R"({"accessToken":"A"})"),
      tokenless("RefreshTokenOnly", R"({"refreshToken":"R"})"),
      tokenless("AccessTokenNumber", R"({"accessToken":7,"refreshToken":"R"})"),
      tokenless("RefreshTokenNull", R"({"accessToken":"A","refreshToken":null})"),
      tokenless("TokensInArrays", R"({"accessToken":["A"],"refreshToken":["R"]})"),
      tokenless("KeysInOtherCase", R"({"AccessToken":"A","RefreshToken":"R","Participants":[]})"),
      tokenless("ParticipantsEmpty", R"({"participants":[]})", SUCCESS),
      tokenless("ParticipantsText", R"({"participants":"x"})"),
      tokenless("ParticipantsNull", R"({"participants":null})"),
      tokenless("ParticipantsObject", R"({"participants":{"id":"1"}})"),
      tokenless("ParticipantsNumbers", R"({"participants":[1,2]})"),
      tokenless("ParticipantsMixed",
                R"({"participants":[{"id":"1","first_name":"A","last_name":"B"},null]})"),
      tokenless("ParticipantsWithBadEntries",
                R"({"participants":[{"id":7,"first_name":"A","last_name":"B"},{},
                    {"id":"2","first_name":"Lena","last_name":"O'Keefe"},{"id":"3"}]})",
                SUCCESS, {"Lena O'Keefe"}),
      {"OkWithReason", answered(200, R"({"error":"Maintenance"})"), api("Maintenance"),
       network("Maintenance"), MALFORMED, SUCCESS},
  };
}

std::vector<ServiceAnswer> statuses() {
  return {
      refused(199),
      refused(201),
      refused(202),
      refused(203),
      refused(204),
      refused(206),
      refused(299),
      refused(300),
      refused(301),
      refused(302),
      refused(303),
      refused(304),
      refused(307),
      refused(308),
      refused(400),
      refused(402),
      refused(403),
      refused(404),
      refused(405),
      refused(408),
      refused(409),
      refused(410),
      refused(413),
      refused(415),
      refused(418),
      refused(422),
      refused(425),
      refused(428),
      refused(430),
      refused(451),
      refused(499),
      refused(600),
      busy(429),
      busy(500),
      busy(501),
      busy(502),
      busy(503),
      busy(504),
      busy(505),
      busy(511),
      busy(599),
      {"Status401", answered(401, std::nullopt), api("Sign-in failed (401)"), SESSION_EXPIRED,
       AUTHORISATION_EXPIRED, AUTHORISATION_EXPIRED},
  };
}

std::vector<ServiceAnswer> reasons() {
  const std::string longer(1000, 'x');
  const std::string html = "<html><body><h1>Bad gateway</h1></body></html>";
  return {
      refused(201, "WithTokens", ALL),
      refused(302, "Html", html),
      refused(400, "Number", R"({"error":7})"),
      refused(400, "Null", R"({"error":null})"),
      refused(400, "Boolean", R"({"error":true})"),
      refused(400, "Array", R"({"error":["x"]})"),
      refused(400, "Object", R"({"error":{"message":"x"}})"),
      refused(400, "OtherKey", R"({"message":"x","Error":"y"})"),
      refused(400, "InAnArray", R"([{"error":"x"}])"),
      refused(400, "Cut", R"({"error":"Participant arch)"),
      refused(400, "InvalidUtf8", "{\"error\":\"\xC3\x28\"}"),
      refused(400, "HalfASurrogate", R"({"error":"\ud800"})"),
      refused(404, "Html", html),
      busy(500, "Html", html),
      busy(503, "Empty", ""),
      busy(503, "Array", "[]"),
      busy(503, "Object", R"({"error":{"message":"x"}})"),
      busy(502, "Cut", R"({"error":"Serv)"),
      refusedSaying(403, "Reason", R"({"error":"No access"})", "No access"),
      refusedSaying(422, "Reason", R"({"error":"Participant archived"})", "Participant archived"),
      refusedSaying(422, "EmptyReason", R"({"error":""})", ""),
      refusedSaying(400, "LongReason", R"({"error":")" + longer + R"("})", longer),
      refusedSaying(400, "EndlessReason", R"({"error":")" + longer + R"(x"})", longer + "…"),
      busySaying(503, "EndlessReason", R"({"error":")" + longer + R"(x"})", longer + "…"),
      refusedSaying(400, "Unicode", R"({"error":"Zu sp\u00e4t \ud83d\ude00"})", "Zu spät 😀"),
      refusedSaying(400, "Doubled", R"({"error":"first","error":"last"})", "last"),
      refusedSaying(400, "DoubledOtherType", R"({"error":7,"error":"last"})", "last"),
      refusedSaying(301, "Reason", R"({"error":"Moved"})", "Moved"),
      busySaying(429, "Reason", R"({"error":"Slow down"})", "Slow down"),
      busySaying(503, "Reason", R"({"error":"Maintenance"})", "Maintenance"),
      busySaying(500, "AfterAByteOrderMark", "\xEF\xBB\xBF{\"error\":\"Broken\"}", "Broken"),
      busySaying(500, "TwoLines", R"({"error":"one\ntwo"})", "one\ntwo"),
      {"Status401Reason", answered(401, R"({"error":"Revoked"})"), api("Revoked"), SESSION_EXPIRED,
       AUTHORISATION_EXPIRED, AUTHORISATION_EXPIRED},
      {"Status401Html", answered(401, html), api("Sign-in failed (401)"), SESSION_EXPIRED,
       AUTHORISATION_EXPIRED, AUTHORISATION_EXPIRED},
      {"Status401WithTokens", answered(401, ALL), api("Sign-in failed (401)"), SESSION_EXPIRED,
       AUTHORISATION_EXPIRED, AUTHORISATION_EXPIRED},
  };
}

std::vector<ServiceAnswer> absences() {
  return {
      unanswered("Unreachable", "Could not connect to the server."),
      unanswered("TimedOut", "The request timed out."),
      unanswered("CutOnTheWay", "The connection was lost."),
      unanswered("UntrustedCertificate", "The server's certificate is not valid."),
      unanswered("Cancelled", "cancelled"),
      {"NoHttp", HttpResponse{std::nullopt, std::nullopt}, network("No response"),
       network("No response"), network("No response"), network("No response")},
      {"NoHttpButBytes", HttpResponse{std::nullopt, ALL}, network("No response"),
       network("No response"), network("No response"), network("No response")},
      late(59, withTokens("Complete", ALL, SUCCESS, {"Zoe Abel"})),
      late(30, busy(503)),
      late(45, refusedSaying(422, "Reason", R"({"error":"Archived"})", "Archived")),
      late(59, unanswered("TimedOut", "The request timed out.")),
  };
}

}  // namespace

std::vector<ServiceAnswer> serviceAnswers() {
  std::vector<ServiceAnswer> all;
  for (const auto& group : {successes(), oddSuccesses(), statuses(), reasons(), absences()})
    all.insert(all.end(), group.begin(), group.end());
  return all;
}

}  // namespace notewick
