#pragma once

namespace notewick {

/// Gives large pieces of memory, such as an answer of the service, back to the system as soon as
/// they are freed. glibc would keep them: after one piece of some megabytes it takes pieces of that
/// size from its heap, and gives the end of the heap back only when it is twice as large. Pieces of
/// up to a megabyte stay, because what is saved over and over would cost new pages each time.
/// Called once, before anything else.
void returnLargeMemory();

}  // namespace notewick
