#pragma once

namespace notewick {

/// A crash of this program leaves no core: neither a file nor input for a collector of crashes, of
/// which the kernel starts none where the limit is 1 (core(5), "Piping core dumps to a program").
/// Tokens and notes would stand in it. A hard limit of 0 cannot be raised to 1: then a collector
/// decides itself. Called once, before anything else.
void refuseCores();

/// Gives the limit back that this program was started with: for the programs that it starts itself,
/// between fork and exec.
void allowCores();

}  // namespace notewick
