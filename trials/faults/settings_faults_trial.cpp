#include "base/runtime_error.h"
#include "fault_trial.h"
#include "settings_records.h"

namespace tarvo::test {
namespace {

// A setting is saved in a file that holds those of several programs.
class SavingWithFaults : public FaultTrial {
 protected:
  void Prepare(FailingPlatform& failing) override {
    store = std::make_unique<RegistryReplacement>(failing);
    store->OpenLocalRegistry(kCompanyName);
  }
  void Work() override { store->SaveSetting(key, value); }

  // Every failure of the store is silent.
  bool MayRaise(const FailingPlatform&) const override { return false; }

  void CheckAfterFault(const FileTree& found, const FailingPlatform&, const Fault& fault) override {
    FileTree others = found;
    others[kSettingsFile] = site.at(kSettingsFile);
    EXPECT_TRUE(others == site) << "another file has changed";
    const std::string& file = found.at(kSettingsFile).content;
    ExpectOtherRecordsSame(file, site.at(kSettingsFile).content, {key});
    if (fault.length == 1) {
      ExpectNoKeyTwice(file);
      EXPECT_EQ(ValueNow(), value) << "what fails once must be tried again";
    }
  }

  std::string ValueNow() {
    RegistryReplacement reader(system);
    reader.OpenLocalRegistry(kCompanyName);
    return reader.GetSetting(key, "none");
  }

  void CheckNextWork(bool) override {
    Prepare(undisturbed);
    Work();
    EXPECT_EQ(store->GetSetting(key, "none"), value);
    ExpectOtherRecordsSame(folder.ReadFile(kSettingsFile), site.at(kSettingsFile).content, {key});
    EXPECT_EQ(store->GetSetting("Sibling_Settings_Port", "none"), "COM3");
  }

  FailingPlatform undisturbed{system};
  std::unique_ptr<RegistryReplacement> store;
  std::string key;
  std::string value;
};

TEST_F(SavingWithFaults, ChangesNoOtherRecordWhenTheKeyIsNew) {
  key = "New_Settings_Key";
  value = "new";
  TryEveryFault("faults.save_new", site, 5);
}

TEST_F(SavingWithFaults, ChangesNoOtherRecordWhenTheKeyIsThere) {
  key = "tarvo.versions_Meter_DOWNLOAD";
  value = "2.0.1";
  TryEveryFault("faults.save_existing", site, 5);
}

TEST_F(SavingWithFaults, ChangesNoOtherRecordWhenTheValueBecomesLonger) {
  key = "tarvo.versions_Meter_DOWNLOAD";
  value = std::string(2500, 'l');
  TryEveryFault("faults.save_longer", site, 11);
}

TEST_F(SavingWithFaults, ChangesNoOtherRecordWhenTheValueBecomesShorter) {
  key = "Sibling_Settings_Sites";
  value = "short";
  TryEveryFault("faults.save_shorter", site, 11);
}

}  // namespace
}  // namespace tarvo::test
