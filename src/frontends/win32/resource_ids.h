// Numbers of the program's resources; read by the resource compiler too.
#pragma once

#define TARVO_PROGRAM_ICON 1
