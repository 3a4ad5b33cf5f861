#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

// Which application opens files of a type, by the standard "Association between MIME types and
// applications" (version 1.0.1).

// The user's own "mimeapps.list", where a choice is written; "" without a home folder.
std::string UserMimeAppsFile();

// The user's own files for the desktops that run, which come before it. They may be missing.
std::vector<std::string> DesktopMimeAppsFiles();

// The desktop file identifier ("viewer.desktop") of the default application of a MIME type; "" when
// there is none. It is the first of:
// - the applications of [Default Applications], in the standard's order of files, that are
//   installed. They need not list the type themselves, which is how the desktops have it, but one
//   that [Removed Associations] takes away in the same folder or in one before it does not count;
// - the applications of [Added Associations], and those that the folders' "mimeinfo.cache" has for
//   the type, that are installed and not taken away.
// `kept` is the identifier that counts though it is not installed, when the user's own files name
// it as the default; "" for none.
std::string DefaultApplication(std::string_view mimeType, std::string_view kept = {});

}  // namespace tarvo
