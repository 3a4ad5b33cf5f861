#include <gtest/gtest.h>
#include <windows.h>

#include "platform/windows/code_page.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_error.h"

namespace tarvo {
namespace {

TEST(WideText, IsTheSameTextInBothForms) {
  EXPECT_EQ(Wide("aé€漢"), L"aé€漢");
  EXPECT_EQ(Wide("\xF0\x9F\x98\x80"), L"\xD83D\xDE00");
  EXPECT_EQ(Narrow(L"aé€漢\xD83D\xDE00"), "aé€漢\xF0\x9F\x98\x80");
  EXPECT_EQ(Wide(""), L"");
  EXPECT_EQ(Narrow(L""), "");
}

TEST(WideText, KeepsSurrogatesThatStandAlone) {
  for (const std::wstring& name : {std::wstring(L"a\xD800"), std::wstring(L"\xDC00\xD800x"),
                                   std::wstring(L"\xDFFF"), std::wstring(L"\xDBFF")}) {
    EXPECT_EQ(Wide(Narrow(name)), name);
    EXPECT_TRUE(IsWhole(Narrow(name)));
  }
}

TEST(WideText, ShowsBytesThatAreNoText) {
  EXPECT_EQ(Wide("a\xFF\xC3(b"), L"a\xFFFD\xFFFD(b");
  EXPECT_FALSE(IsWhole("a\xFF"));
  EXPECT_FALSE(IsWhole("\xED\xA0"));
  EXPECT_TRUE(IsWhole("aé€漢"));
}

TEST(AnsiText, IsRefusedWhereTheCodePageLacksACharacter) {
  if (::GetACP() != 1252) GTEST_SKIP() << "another code page";
  EXPECT_EQ(ToAnsi("Größe €"),
            "Gr\xF6\xDF"
            "e \x80");
  EXPECT_EQ(ToAnsi("Łódź"), std::nullopt) << "not what only looks alike";
  EXPECT_EQ(FromAnsi("Gr\xF6\xDF"
                     "e \x80"),
            "Größe €");
}

TEST(ErrorFromCode, HasTheClassicNumber) {
  struct Row {
    DWORD code;
    int number;
  };
  const Row rows[] = {
      {ERROR_FILE_NOT_FOUND, 53},
      {ERROR_PATH_NOT_FOUND, 76},
      {ERROR_ACCESS_DENIED, 70},
      {ERROR_SHARING_VIOLATION, 70},
      {ERROR_WRITE_PROTECT, 70},
      {ERROR_DISK_FULL, 61},
      {ERROR_HANDLE_DISK_FULL, 61},
      {kDiskQuotaExceeded, 61},
      {ERROR_FILE_EXISTS, 75},
      {ERROR_ALREADY_EXISTS, 75},
      {ERROR_DIR_NOT_EMPTY, 75},
      {ERROR_INVALID_NAME, 52},
      {ERROR_NOT_READY, 68},
      {ERROR_TOO_MANY_OPEN_FILES, 67},
      {ERROR_BAD_EXE_FORMAT, 5},
      {ERROR_BAD_NETPATH, 76},
      {kElevationRequired, 70},
      {ERROR_INVALID_HANDLE, 54},
      {ERROR_CRC, 57},  // stands for all that have no row of their own
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ErrorFromCode(row.code).Number(), row.number) << row.code;
  }
  EXPECT_EQ(ErrorFromCode(ERROR_FILE_NOT_FOUND, "C:\\x").Description(), "File not found: C:\\x");
  EXPECT_EQ(FolderErrorFromCode(ERROR_FILE_NOT_FOUND, "C:\\x").Number(), 76);
}

}  // namespace
}  // namespace tarvo
