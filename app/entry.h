#pragma once

#include <memory>
#include <string>
#include <vector>

namespace notewick {

class AppDelegate;
class Application;

/// The two references that live as long as the process, set when the program starts its user
/// interface. `delegate` is what keeps the delegate alive.
extern Application* app;
extern std::shared_ptr<AppDelegate> delegate;

/// Starts the program with registered ports: sets the constants, then runs the self-test or the
/// user interface, and gives the exit status.
int start(const std::vector<std::string>& arguments);

/// Destroys everything that the user interface made, so that the implementations of the ports can
/// be destroyed after it. Nothing is saved or sent.
void releaseProgram();

}  // namespace notewick
