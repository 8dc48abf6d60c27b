#pragma once

#include <QIODevice>
#include <string>

namespace notewick {

/// The body of one request, which can be read once and not again: a network stack that would like
/// to send the request a second time finds that it cannot.
class UploadOnce : public QIODevice {
 public:
  explicit UploadOnce(std::string body);

  [[nodiscard]] bool isSequential() const override { return true; }
  [[nodiscard]] qint64 bytesAvailable() const override;
  bool reset() override { return false; }

 protected:
  qint64 readData(char* data, qint64 size) override;
  qint64 writeData(const char* /*data*/, qint64 /*size*/) override { return -1; }

 private:
  std::string body_;
  std::size_t position_ = 0;
};

}  // namespace notewick
