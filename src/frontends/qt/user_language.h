#pragma once

namespace tarvo::qt {

// Gives the toolkit's own texts, such as the buttons of messages, the user's language. The first
// call does so; it is put off until the first dialog because no window needs it.
void InstallUserLanguage();

}  // namespace tarvo::qt
