#pragma once

#include <string>
#include <string_view>

// Trials try to break a promise of the program many times over and count how often it held. Each
// has two sizes: the quick one is a test like any other; the full one takes minutes to hours and
// gives the figures of docs/promises.md.
namespace tarvo::test {

// Whether this run is to be the full one: the environment variable TARVO_TRIALS is "full".
bool IsFullTrial();

// How often to try: `quick` or `full`, by the size of this run.
int Rounds(int quick, int full);

// Tells a figure, as one line "figure NAME: TEXT" of the output. The name is that of the row in
// docs/promises.md, without "trials.", for example "lock.new_keys"; the text says how many were
// tried and what came of it, for example "40,000 writes by 8 processes, 0 lost".
void TellFigure(std::string_view name, std::string_view text);

// 40000 as "40,000".
std::string Counted(long long number);

}  // namespace tarvo::test
