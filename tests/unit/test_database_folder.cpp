#include <gtest/gtest.h>

#include "database/folder.h"
#include "support/scratch.h"

namespace quenfold::database {
namespace {

TEST(FolderOf, TakesTheFormAndSlashesAtTheEndAway) {
  EXPECT_EQ(folderOf("."), ".");
  EXPECT_EQ(folderOf("legacy:.//"), ".");
  EXPECT_EQ(folderOf("packed:./"), ".");
  EXPECT_EQ(folderOf("/"), "/");
  EXPECT_EQ(folderOf("//"), "/");
}

TEST(FolderOf, SaysWhatIsNoFolder) {
  EXPECT_EQ(test::messageOf([] { folderOf("no/where/"); }), "no such folder: no/where");
  EXPECT_EQ(test::messageOf([] { folderOf(""); }), "no such folder: ");
  EXPECT_EQ(test::messageOf([] { folderOf("/dev/null"); }), "not a folder: /dev/null");
}

TEST(PathFor, RefusesTheOtherForm) {
  EXPECT_EQ(pathFor("new/", Form::kPacked), "new");
  EXPECT_EQ(pathFor("packed:new", Form::kPacked), "new");
  EXPECT_EQ(test::messageOf([] { pathFor("legacy:new", Form::kPacked); }),
            "not a packed database: legacy:new");
}

}  // namespace
}  // namespace quenfold::database
