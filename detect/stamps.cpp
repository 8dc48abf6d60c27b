#include "detect/stamps.h"

#include <cstdio>

#include "platform/ports.h"

namespace notewick {
namespace {

template <class... Numbers>
std::string formatted(const char* format, Numbers... numbers) {
  char text[64];
  std::snprintf(text, sizeof text, format, numbers...);
  return text;
}

}  // namespace

std::string dayStamp() {
  return dayStamp(ports().clock.now());
}

std::string dayStamp(Date date) {
  const CivilTime time = ports().clock.localTime(date);
  return formatted("%04d-%02d-%02d", time.year, time.month, time.day);
}

std::string timeStamp() {
  return timeStamp(ports().clock.now());
}

std::string timeStamp(Date date) {
  const CivilTime time = ports().clock.localTime(date);
  return formatted("%02d:%02d", time.hour, time.minute);
}

std::string secondStamp() {
  const CivilTime time = ports().clock.localTime(ports().clock.now());
  return formatted("%02d:%02d:%02d", time.hour, time.minute, time.second);
}

}  // namespace notewick
