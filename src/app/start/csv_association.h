#pragma once

#include "app/globals/globals.h"

namespace tarvo {

// What opens CSV files.
enum class CsvAssociation {
  kViewer,            // the maker's CSV viewer
  kOther,             // another program, or nothing
  kMissingCommand,    // the viewer's own class, which has no command
  kIncorrectCommand,  // the viewer's own class with a command that is not the viewer's
};

// Looks at the class of ".csv" and at that class's command, which is the viewer's when "csvview"
// stands anywhere in it, in any letter case.
CsvAssociation ReadCsvAssociation(Platform& platform);

// Tells the user when the viewer's class lacks its command; else asks, where CSV files open in
// another program or in none, whether they shall open in the viewer. "No" is remembered and ends
// the question for good; "Yes" is not, so that the next start finds the association or what is
// wrong with it.
void CheckCsvAssociation(Globals& globals);

}  // namespace tarvo
