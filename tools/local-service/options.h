#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tools/local-service/service.h"

namespace notewick::service {

/// An account to make or change at start. Without a password an existing account keeps its own;
/// without a list a new account gets the demonstration's and an existing one keeps its own.
struct AccountOptions {
  std::string email;
  std::optional<std::string> password = {};
  std::optional<Participants> participants = {};
};

struct Options {
  ServiceSettings settings;
  std::vector<AccountOptions> accounts;
  std::optional<std::filesystem::path> portFile;
  bool help = false;
};

/// The command line cannot be followed; what() says why.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The environment: a variable's value, null when it is not set.
using Environment = std::function<const char*(const char*)>;

extern const char* const USAGE;

/// Reads the command line without the program's name, and the files and the variable that it
/// names. Throws UsageError.
[[nodiscard]] Options readOptions(const std::vector<std::string>& arguments,
                                  const Environment& environment);

/// Brings the service's accounts to what the options ask. Throws UsageError for a new account
/// without a password.
void applyAccounts(const std::vector<AccountOptions>& wanted, Accounts& accounts);

}  // namespace notewick::service
