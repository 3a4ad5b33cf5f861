#include "ctl/listed_drivers.h"

#include "app/globals/data_folder.h"
#include "catalogue/driver_list.h"

namespace tarvo {

ListedDrivers::ListedDrivers(Globals& globals) {
  globals.OpenSettings();
  globals.translator.LoadDictionary(kDictionary);
  globals.translator.TranslateWindow(*this);
  dataPath = GetDataDirectory(globals);
  globals.library.ChangeToFolder(dataPath);
  UpdateDriverList(globals, *this);
  lvListView.Sort();
}

}  // namespace tarvo
