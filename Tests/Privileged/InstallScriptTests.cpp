#include <gtest/gtest.h>

#include "InstallScript.h"

namespace quorvex {
namespace {

TEST(InstallScript, ShellQuotingWrapsInSingleQuotes) {
  EXPECT_EQ(shellQuoted("/a b/$c`d`\\e\n"), "'/a b/$c`d`\\e\n'");
  EXPECT_EQ(shellQuoted(""), "''");
}

TEST(InstallScript, SingleQuoteBecomesFourCharacters) {
  EXPECT_EQ(shellQuoted("it's"), R"('it'\''s')");
  EXPECT_EQ(shellQuoted("'"), R"(''\''')");
}

TEST(InstallScript, AppleScriptEscapesBackslashesBeforeDoubleQuotes) {
  EXPECT_EQ(appleScriptEscaped(R"(a"b)"), R"(a\"b)");
  EXPECT_EQ(appleScriptEscaped(R"(a\b)"), R"(a\\b)");
  EXPECT_EQ(appleScriptEscaped(R"(\")"), R"(\\\")");
}

TEST(InstallScript, ScriptForPlainPaths) {
  EXPECT_EQ(helperInstallScript("/Applications/Quorvex.app/Contents/Resources/QuorvexHelper",
                                "/Library/PrivilegedHelperTools/com.quorvex.helper"),
            "do shell script \"/usr/bin/install -d -m 755 '/Library/PrivilegedHelperTools' && "
            "/usr/bin/install -o root -g wheel -m 4755 "
            "'/Applications/Quorvex.app/Contents/Resources/QuorvexHelper' "
            "'/Library/PrivilegedHelperTools/com.quorvex.helper'\" with administrator privileges");
}

TEST(InstallScript, DoubleQuoteIsEscapedAfterTheShellsQuoting) {
  EXPECT_EQ(helperInstallScript(R"(/a"b/tool)", "/x/helper"),
            R"(do shell script "/usr/bin/install -d -m 755 '/x' && )"
            R"(/usr/bin/install -o root -g wheel -m 4755 '/a\"b/tool' '/x/helper'")"
            " with administrator privileges");
}

TEST(InstallScript, SingleQuoteOfAPathPassesBothLevels) {
  // The shell's word is 'it'\''s'; the AppleScript string doubles its backslash.
  EXPECT_EQ(helperInstallScript("/it's", "/x/it's/helper"),
            R"(do shell script "/usr/bin/install -d -m 755 '/x/it'\\''s' && )"
            R"(/usr/bin/install -o root -g wheel -m 4755 '/it'\\''s' '/x/it'\\''s/helper'")"
            " with administrator privileges");
}

TEST(InstallScript, FolderOfAHelperInTheRootIsTheRoot) {
  EXPECT_NE(helperInstallScript("/s", "/helper").find("install -d -m 755 '/' &&"),
            std::string::npos);
}

}  // namespace
}  // namespace quorvex
