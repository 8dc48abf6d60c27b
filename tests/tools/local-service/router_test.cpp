#include "tools/local-service/router.h"

#include <gtest/gtest.h>

namespace notewick::service {
namespace {

class RouterTest : public testing::Test {
 protected:
  RouterTest() {
    router.add("GET", "/a", [](const Request&) { return Answer{.body = "got"}; });
    router.add("POST", "/a", [](const Request& request) { return Answer{.body = request.body}; });
  }

  Answer ask(const std::string& method, const std::string& path) {
    return router.answer({.method = method, .path = path, .body = "posted"});
  }

  Router router;
};

TEST_F(RouterTest, GoesByPathAndMethod) {
  EXPECT_EQ(ask("GET", "/a").body, "got");
  EXPECT_EQ(ask("POST", "/a").body, "posted");
}

TEST_F(RouterTest, AnswersHeadAsGet) {
  EXPECT_EQ(ask("HEAD", "/a").status, 200);
}

TEST_F(RouterTest, TakesPathsExactly) {
  for (const auto* const path : {"/", "/a/", "/A", "/ab", ""}) {
    EXPECT_EQ(ask("GET", path).status, 404) << path;
  }
}

TEST_F(RouterTest, NamesTheMethodsThatAPathKnows) {
  const auto refusal = ask("DELETE", "/a");
  EXPECT_EQ(refusal.status, 405);
  EXPECT_EQ(refusal.headers.back(), std::pair(std::string("Allow"), std::string("GET, POST")));
}

}  // namespace
}  // namespace notewick::service
