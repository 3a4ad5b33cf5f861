#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "support/hand_moved_platform.h"
#include "support/temporary_folder.h"
#include "tools/tool.h"

namespace tarvo::tools {

// A driver "Meter" with a description, in a folder of the test's own, and a clock that stands at
// noon of 15 March 2023.
class ToolTest : public ::testing::Test {
 protected:
  ToolTest() {
    platform.specialFolders[kCommonDocuments] = folder.MakeFolder("documents");
    Describe(kDescription);
    tool = std::make_unique<Tool>(platform, folder / "Meter");
  }

  void Describe(std::string_view description) const {
    folder.WriteFile("Meter/driver.inf", description);
  }

  std::string Stored(const std::string& key) const {
    return tool->Settings().GetSetting(key, "absent");
  }

  static constexpr const char* kDescription =
      "[Driver]\r\nModel=VT-40\r\nVersion=1.0\r\n\r\n[Device]\r\nSerial=004417\r\nFiles=CSV,ASC\r\n"
      "\r\n[Fields]\r\n\"SUPPLYVOLTAGE\",\"Supply Voltage\",\"TEXT\",\"V\"\r\n"
      "\"STATUS\",\"Status\",\"TEXT\",\"\"\r\n";

  test::TemporaryFolder folder;
  test::HandMovedPlatform platform;
  std::unique_ptr<Tool> tool;
};

}  // namespace tarvo::tools
