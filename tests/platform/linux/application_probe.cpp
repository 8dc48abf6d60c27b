// A program that does nothing but run the application object and print what it is told.
#include <QWidget>
#include <clocale>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string_view>

#include "platform/linux/application.h"
#include "platform/linux/workspace.h"

namespace {

void print(const std::string& line) {
  std::cout << line << std::endl;
}

class Delegate : public notewick::ApplicationDelegate {
 public:
  void applicationDidFinishLaunching() override {
    const char* const platform = std::getenv("QT_QPA_PLATFORM");
    print(std::string("launched on ") + qPrintable(QGuiApplication::platformName()) +
          (platform != nullptr ? ", for children too" : "") +
          (std::string_view(std::setlocale(LC_NUMERIC, nullptr)) != "C" ? ", numbers local" : ""));
    QWidget window;
    window.show();
    window.close();
  }
  void applicationReopened() override {
    print("reopened " + notewick::DesktopWorkspace().bundlePath());
  }
  void applicationWillTerminate() override { print("will terminate"); }
};

}  // namespace

int main(int, char** argv) {
  notewick::QtApplication application(argv);
  application.becomeAccessory();
  const auto delegate = std::make_shared<Delegate>();
  const int status = application.run(delegate);
  print("ended");
  return status;
}
