#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace notewick::fuzz {

// One function for each thing that reads what others wrote. It takes any bytes, and ends the
// process where the product breaks a promise. All are in one program, because they share most of
// what is built; fuzz/run says which one it is to be.

void lists(std::string_view bytes);            ///< files of the three lists
void answers(std::string_view bytes);          ///< bodies of the service's answers
void http_answer(std::string_view bytes);      ///< heads and pieces of answers as they arrive
void titles(std::string_view bytes);           ///< a window title, and names to find in it
void quoting(std::string_view bytes);          ///< texts that other programs will read
void settings(std::string_view bytes);         ///< the settings file, and the address in it
void desktop_entries(std::string_view bytes);  ///< desktop entries that name a program
void x11(std::string_view bytes);              ///< properties of windows
void bus_answers(std::string_view bytes);      ///< answers of programs and of the secret service
void local_service(std::string_view bytes);    ///< requests to the local service

/// Ends the process, and names the promise that was broken, unless `kept`.
void require(bool kept, const char* promise);

/// The parts of `text` between separators: one more than there are separators.
[[nodiscard]] std::vector<std::string> parts(std::string_view text, char separator);

}  // namespace notewick::fuzz
