#include "core/nexapi.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace touch {
namespace {

std::string complaintAbout(const std::filesystem::path& path) {
  const auto driver = NexapiDriver::bind(path);
  return driver ? "none" : driver.error().describe();
}

TEST(Binding, SaysWhatIsWrongWithALibrary) {
  const test::TemporaryFolder folder;
  folder.write("text.so", "not a library");
  const struct {
    std::filesystem::path path;
    std::string part;
  } cases[] = {
      {"/nowhere/libnexapi.so", "cannot open shared object file"},
      {folder.path() / "text.so", "file too short"},
      {INCOMPLETE_LIBRARY, "lacks the operation IsPenUp"},
      {"libm.so.6",
       "cannot open shared object file"},  // a plain name is a file here, not the system's
  };
  for (const auto& [path, part] : cases) {
    const std::string complaint = complaintAbout(path);
    EXPECT_NE(complaint.find(part), complaint.npos) << complaint;
    EXPECT_NE(complaint.find(path.string()), complaint.npos) << complaint;
  }
}

}  // namespace
}  // namespace touch
