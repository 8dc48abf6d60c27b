#include "tools/local-service/options.h"

#include <charconv>
#include <fstream>

namespace notewick::service {

const char* const USAGE = R"(usage: local-service (--tls-dir DIR | --plain) [OPTION...]

  --tls-dir DIR           serve HTTPS; make ca.pem, server.pem and server.key in DIR if needed
  --plain                 serve HTTP
  --host ADDRESS          127.0.0.1 (the default), ::1 or localhost; nothing else
  --port N                the port; 0 (the default) takes a free one
  --port-file FILE        write the port there once listening, and the control port below it
  --database FILE         keep everything in FILE; without it, in memory
  --access-lifetime N     seconds until an access token expires (3600)
  --account EMAIL         make the account, or change it; may be given several times. Its password
                          is the value of LOCAL_SERVICE_PASSWORD, unless there follows
    --password-file FILE    the first line of FILE is the password of this account
    --participants FILE     [{"id", "first_name", "last_name"}, ...] are this account's participants
  --control-port N        open the control channel for tests; 0 takes a free port
  --help                  show this
)";

namespace {

constexpr auto PASSWORD_VARIABLE = "LOCAL_SERVICE_PASSWORD";

std::string firstLineOf(const std::string& file) {
  std::ifstream stream(file);
  std::string line;
  if (!std::getline(stream, line) || line.empty()) {
    throw UsageError(file + ": no password on the first line");
  }
  return line;
}

Participants participantsIn(const std::string& file) {
  try {
    return readParticipants(file);
  } catch (const std::runtime_error& wrong) {
    throw UsageError(wrong.what());
  }
}

class Reading {
 public:
  Reading(const std::vector<std::string>& arguments, const Environment& environment)
      : arguments_(arguments) {
    if (const char* const password = environment(PASSWORD_VARIABLE)) password_ = password;
  }

  Options all() {
    while (at_ < arguments_.size()) readOne(arguments_[at_++]);
    if (!options_.help && plain_ == options_.settings.tlsFolder.has_value()) {
      throw UsageError("give either --tls-dir or --plain");
    }
    return std::move(options_);
  }

 private:
  void readOne(const std::string& name) {
    auto& settings = options_.settings;
    if (name == "--help") {
      options_.help = true;
    } else if (name == "--plain") {
      plain_ = true;
    } else if (name == "--tls-dir") {
      settings.tlsFolder = value(name);
    } else if (name == "--host") {
      settings.host = loopback(value(name));
    } else if (name == "--port") {
      settings.port = number(name, 0, 65535);
    } else if (name == "--port-file") {
      options_.portFile = value(name);
    } else if (name == "--database") {
      settings.database = value(name);
    } else if (name == "--access-lifetime") {
      settings.accessLifetime = std::chrono::seconds(number(name, 1, 1'000'000'000));
    } else if (name == "--control-port") {
      settings.controlPort = number(name, 0, 65535);
    } else if (name == "--account") {
      options_.accounts.push_back({.email = value(name), .password = password_});
    } else if (name == "--password-file") {
      account(name).password = firstLineOf(value(name));
    } else if (name == "--participants") {
      account(name).participants = participantsIn(value(name));
    } else {
      throw UsageError("unknown option " + name);
    }
  }

  const std::string& value(const std::string& name) {
    if (at_ == arguments_.size()) throw UsageError(name + " needs a value");
    return arguments_[at_++];
  }

  int number(const std::string& name, int least, int most) {
    const auto& text = value(name);
    int read = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
    if (error != std::errc{} || end != text.data() + text.size() || read < least || read > most) {
      throw UsageError(name + " needs a whole number from " + std::to_string(least) + " to " +
                       std::to_string(most));
    }
    return read;
  }

  AccountOptions& account(const std::string& name) {
    if (options_.accounts.empty()) throw UsageError(name + " belongs after an --account");
    return options_.accounts.back();
  }

  static const std::string& loopback(const std::string& host) {
    if (!isLoopback(host)) throw UsageError("\"" + host + "\" is not a loopback address");
    return host;
  }

  const std::vector<std::string>& arguments_;
  std::size_t at_ = 0;
  std::optional<std::string> password_;
  bool plain_ = false;
  Options options_;
};

}  // namespace

Options readOptions(const std::vector<std::string>& arguments, const Environment& environment) {
  return Reading(arguments, environment).all();
}

void applyAccounts(const std::vector<AccountOptions>& wanted, Accounts& accounts) {
  for (const auto& [email, password, participants] : wanted) {
    auto account = accounts.find(email);
    const bool isNew = !account;
    if (isNew && !password) {
      throw UsageError(email + " needs a password: " + PASSWORD_VARIABLE + " or --password-file");
    }
    if (password) account = accounts.save(email, *password);
    if (participants || isNew) {
      accounts.saveParticipants(*account, participants.value_or(demonstrationParticipants()));
    }
  }
}

}  // namespace notewick::service
