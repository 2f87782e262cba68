#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace veloran::test {
namespace {

using testing::HasSubstr;

std::string textOf(const std::string& file) {
    std::ifstream stream(std::filesystem::path(VELORAN_SOURCE_DIR) / file);
    EXPECT_TRUE(stream) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(DesktopPapers, EntryBearsTheNameThatWindowsTell) {
    EXPECT_THAT(textOf("src/app/application.cpp"), HasSubstr("setDesktopFileName(\"veloran\")"));
    const auto entry = textOf("packaging/veloran.desktop");
    EXPECT_THAT(entry, HasSubstr("\nExec=veloran\n"));
    EXPECT_THAT(entry, HasSubstr("\nIcon=veloran\n"));
    EXPECT_THAT(textOf("packaging/invalid.example.veloran.metainfo.xml"),
                HasSubstr("<launchable type=\"desktop-id\">veloran.desktop</launchable>"));
}

TEST(DesktopPapers, WindowClassIsTheNameOfTheApplication) {
    EXPECT_THAT(textOf("src/app/application.cpp"), HasSubstr("setApplicationName(\"Veloran\")"));
    EXPECT_THAT(textOf("packaging/veloran.desktop"), HasSubstr("\nStartupWMClass=Veloran\n"));
}

TEST(DesktopPapers, NewestReleaseIsThisVersion) {
    const std::string version = VELORAN_VERSION;
    const auto changes = textOf("packaging/changelog");
    EXPECT_EQ(changes.substr(0, changes.find(')')), "veloran (" + version);
    const auto metainfo = textOf("packaging/invalid.example.veloran.metainfo.xml");
    const std::string release = "<release version=\"";
    const auto newest = metainfo.find(release);
    ASSERT_NE(newest, std::string::npos);
    EXPECT_EQ(metainfo.substr(newest + release.size(), version.size() + 1), version + "\"");
    for (const auto* page : {"packaging/veloran.1", "packaging/veloran-rehearse.1"}) {
        EXPECT_THAT(textOf(page), HasSubstr("\"Veloran " + version + "\"")) << page;
    }
}

}  // namespace
}  // namespace veloran::test
