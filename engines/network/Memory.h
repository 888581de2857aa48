#pragma once

/// How a program that computes on large networks keeps its memory. No result depends on it.
namespace engines {

/// To be called once at the start of a program: what is freed later stays with the program to be used again, for a
/// fresh page costs more than filling it.
void keepFreedMemory();

}  // namespace engines
