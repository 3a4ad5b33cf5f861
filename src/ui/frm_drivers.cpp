#include "ui/frm_drivers.h"

#include <optional>
#include <vector>

#include "app/globals/data_folder.h"
#include "base/numbers.h"
#include "base/runtime_error.h"
#include "catalogue/command_state.h"
#include "catalogue/driver_list.h"
#include "ui/commands.h"

namespace tarvo {
namespace {

constexpr float kMinimumWidth = 3000;  // twips
constexpr int kKeyF1 = 112;

// Bounds and the settings that keep them, in the order in which they are assigned and saved.
struct KeptBound {
  const SettingsKey* key;
  float Bounds::*bound;
};

constexpr KeptBound kKeptBounds[] = {
    {&keys::kMainLeft, &Bounds::Left},
    {&keys::kMainTop, &Bounds::Top},
    {&keys::kMainWidth, &Bounds::Width},
    {&keys::kMainHeight, &Bounds::Height},
};

}  // namespace

frmDrivers::frmDrivers(Globals& globals, Form& splash)
    : globals_(globals), splash_(splash), about_(globals), stdDrivers_(globals, DriverFileList) {
  ConnectHandlers();
}

void frmDrivers::ConnectHandlers() {
  for (const MenuCommand& command : kMenuCommands) {
    (this->*command.entry).Click = [this, handler = command.handler] { (this->*handler)(); };
  }
  for (int mode = 0; mode < kViewModes; ++mode) {
    mnuListViewMode[static_cast<std::size_t>(mode)].Click = [this, mode] {
      mnuListViewMode_Click(mode);
    };
  }
  tbToolBar.ButtonClick = [this](const ToolbarButton& button) { tbToolBar_ButtonClick(button); };
  lvListView.DblClick = [this] { lvListView_DblClick(); };
  lvListView.KeyPress = [this](int& keyAscii) { lvListView_KeyPress(keyAscii); };
  lvListView.MouseUp = [this](int button) { lvListView_MouseUp(button); };
  lvListView.ItemClick = [this](ListItem& item) { lvListView_ItemClick(item); };
  tmrStuff.Tick = [this] { tmrStuff_Timer(); };
}

void frmDrivers::Form_Load() {
  FirstActivate = true;
  globals_.translator.TranslateWindow(*this);
  SetColumnTexts();
  EnterDataFolder();
  RestorePlace();
  OldExeSetting = globals_.Setting(keys::kOldExe);
  ExeSetting = globals_.Setting(keys::kExe);
  UpdateDriverList(globals_, *this);
  RestoreView();
  if (!globals_.ArgumentsAre("/r")) globals_.frontEnd.Show(*this);
  globals_.frontEnd.Yield();
  if (!IsLoaded()) return;  // closed by the user during that yield
  tbToolBar.Press(lvListView.View() + kFirstViewButton);
  mnuListViewMode_Click(lvListView.View());
  if (globals_.ArgumentsAre("/a")) StartWithAddingDrivers();
}

void frmDrivers::StartWithAddingDrivers() {
  RefreshDrivers();
  if (!IsLoaded()) return;
  lvListView.Select(&lvListView.ItemAt(0));
  globals_.frontEnd.Unload(splash_);
  lvListView_DblClick();
}

void frmDrivers::SetColumnTexts() {
  const std::string texts[1 + ListItem::kSubItems] = {
      globals_.Translate("Name"),
      globals_.Translate("%1 Downloads", "CSV"),
      globals_.Translate("%1 Downloads", "ASC"),
      globals_.Translate("%1 Downloads", "TXT"),
      globals_.Translate("Download Version"),
      globals_.Translate("Upload Version"),
      globals_.Translate("Properties Version"),
  };
  for (std::size_t i = 0; i < lvListView.ColumnHeaders.size(); ++i) {
    ColumnHeader& column = lvListView.ColumnHeaders[i];
    column.Text = texts[i];
    if (i > 0) column.Width = globals_.frontEnd.TextWidth(column.Text);
  }
}

void frmDrivers::EnterDataFolder() {
  dataPath = GetDataDirectory(globals_);
  globals_.library.ChangeToFolder(dataPath);
  // A folder that was chosen stays the chosen one, though it could not be read a moment ago.
  const std::optional<std::string> stored = globals_.KnownSetting(keys::kDirectoryRead);
  if (stored && (stored->empty() || *stored == dataPath)) {
    globals_.SaveSetting(keys::kDirectoryWritten, dataPath);
  }
}

void frmDrivers::RestorePlace() {
  for (const KeptBound& kept : kKeptBounds) {
    const std::string text = globals_.Setting(*kept.key);
    Place.*kept.bound = ToSingle(globals_.library.ToNumber(text));
  }
}

void frmDrivers::RestoreView() {
  const std::string text = globals_.Setting(keys::kViewModeRead);
  lvListView.SetView(ToInteger(globals_.library.ToNumber(text)));
  lvListView.SortKey = 0;
  lvListView.Sort();
}

void frmDrivers::Form_Unload() {
  FrontEnd& frontEnd = globals_.frontEnd;
  // The first loaded window is left alone. Unloading one may take others with it.
  for (std::size_t i = frontEnd.LoadedForms().size(); i-- > 1;) {
    if (i < frontEnd.LoadedForms().size()) frontEnd.Unload(*frontEnd.LoadedForms()[i]);
  }
  if (State != WindowState::kMinimised) SavePlace();
  globals_.SaveSetting(keys::kViewModeWritten, std::to_string(lvListView.View()));
}

void frmDrivers::SavePlace() {
  for (const KeptBound& kept : kKeptBounds) {
    globals_.SaveSetting(*kept.key,
                         SingleText(Place.*kept.bound, globals_.library.DecimalSeparator()));
  }
}

void frmDrivers::Form_Activate() {
  FirstActivate = false;
  // A refresh that has not finished when the window is activated ends the run.
  if (Refreshing) globals_.frontEnd.Unload(*this);
}

void frmDrivers::Form_KeyDown(int& keyCode) {
  // The setting is read at every key, as sibling programs may change it at any time.
  if (globals_.Setting(keys::kVista) == "yes" && keyCode == kKeyF1) {
    keyCode = 0;
    mnuHelpContents_Click();
  }
}

void frmDrivers::Form_Resize() {
  if (Place.Width < kMinimumWidth) Place.Width = kMinimumWidth;
  SizeControls();
}

void frmDrivers::SizeControls() {
  FrontEnd& frontEnd = globals_.frontEnd;
  const float toolbar = tbToolBar.Visible ? frontEnd.ToolbarHeight(*this) : 0;
  const float statusBar = sbStatusBar.Visible ? frontEnd.StatusBarHeight(*this) : 0;
  lvListView.Place.Left = 0;
  lvListView.Place.Width = frontEnd.ScaleWidth(*this);
  lvListView.Place.Top = toolbar;
  try {
    lvListView.SetHeight(frontEnd.ScaleHeight(*this) - (statusBar + toolbar));
  } catch (const RuntimeError&) {
    // The window is too low for any list: it keeps the height that it had.
  }
}

}  // namespace tarvo
