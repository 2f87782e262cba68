#include "ui/settings/sources_section.h"

#include <gmock/gmock.h>

#include "base/unique_id.h"
#include "settings_fixture.h"
#include "ui/settings/custom_sources.h"
#include "ui/theme.h"
#include "ui/widgets/disclosure.h"
#include "ui/widgets/fitted_text.h"
#include "ui/widgets/switch_button.h"

namespace veloran::test {
namespace {

constexpr const char* kStation =
    "ISS (ZARYA)\n"
    "1 25544U 98067A   26095.54791667  .00016717  00000+0  10270-3 0  9994\n"
    "2 25544  51.6412  10.7412 0002819  32.7451  12.4721 15.50073832123456\n";

class SourcesSectionTest : public SettingsFixture {
  protected:
    Disclosure& disclosure(const char* name) { return child<Disclosure>(*sheet, name); }
    bool isOn(const char* name) { return child<SwitchButton>(*sheet, name).isChecked(); }
    bool isEnabled(const char* name) { return child<QPushButton>(*sheet, name).isEnabled(); }
    bool isSubscribed(const char* key) { return state->subscribedCategories->contains(key); }

    void add(const QString& name, const QString& url) {
        field("newSourceName").setText(name);
        field("newSourceURL").setText(url);
        click("addSource");
        dropOldRows();
    }
    static void dropOldRows() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    std::vector<UserTLESource> stored() { return state->userSources().load(); }
};

TEST_F(SourcesSectionTest, OneGroupPerSectionInTheOrderOfTheCatalogue) {
    QStringList names;
    for (const auto* found : sheet->findChildren<Disclosure*>()) names << found->objectName();
    EXPECT_EQ(names,
              (QStringList{"section Amateur & Stations", "section Special",
                           "section Weather & Earth", "section Navigation",
                           "section Communications", "section Scientific", "customSources"}));
    EXPECT_FALSE(disclosure("section Special").isOpen());
}

TEST_F(SourcesSectionTest, HeadingsCountTheSubscribedGroups) {
    EXPECT_EQ(disclosure("section Amateur & Stations").detail(), "2/4");
    EXPECT_EQ(disclosure("section Special").detail(), "3") << "none of them";
    click("group visual");
    sheet->refresh();
    EXPECT_EQ(disclosure("section Special").detail(), "1/3");
}

TEST_F(SourcesSectionTest, SwitchSubscribesAndLoadsAtOnce) {
    EXPECT_TRUE(isOn("group amateur"));
    EXPECT_FALSE(isOn("group weather"));
    click("group weather");
    EXPECT_TRUE(isSubscribed("weather"));
    EXPECT_TRUE(state->isLoadingTLEs);
    machine.loop.runPosted();
    EXPECT_FALSE(state->isLoadingTLEs);
    click("group amateur");
    EXPECT_FALSE(isSubscribed("amateur"));
    EXPECT_TRUE(state->isLoadingTLEs);
    click("cancelButton");
    EXPECT_EQ(state->subscribedCategories.get(), (std::set<std::string>{"stations", "weather"}));
}

TEST_F(SourcesSectionTest, SwitchesFollowSubscriptionsMadeElsewhere) {
    state->subscribedCategories = std::set<std::string>{"goes"};
    sheet->refresh();
    EXPECT_FALSE(isOn("group amateur"));
    EXPECT_TRUE(isOn("group goes"));
    EXPECT_FALSE(state->isLoadingTLEs) << "following is no change";
}

TEST_F(SourcesSectionTest, AgeOfTheElementsTellsAndColours) {
    for (const auto& [seconds, text, ink] : {std::tuple{30.0, "TLE age: < 1m ago", Ink::green},
                                             {100000.0, "TLE age: 1d ago", Ink::yellow},
                                             {999999.0, "TLE age: 11d ago", Ink::red}}) {
        state->tleAge = seconds;
        sheet->refresh();
        EXPECT_EQ(textOf(*sheet, "tleAge"), text);
        EXPECT_EQ(child<ValueLabel>(*sheet, "tleAge").textStyle().ink, ink);
    }
}

TEST_F(SourcesSectionTest, RefreshNowDownloadsAnew) {
    machine.files.files["/home/test/.veloran/tle/amateur.timestamp"] =
        std::to_string(machine.loop.now().unixSeconds());
    click("refreshNow");
    EXPECT_TRUE(state->isLoadingTLEs);
    machine.loop.runPosted();
    EXPECT_FALSE(machine.files.files.contains("/home/test/.veloran/tle/amateur.timestamp"));
    EXPECT_EQ(machine.http.requests.size(), 2u);
}

TEST_F(SourcesSectionTest, RowsTellWhatTheLastDownloadGave) {
    const auto told = [this](const char* name) {
        const auto* label = sheet->findChild<ValueLabel*>(QString("%1 detail").arg(name));
        return label ? label->text() : QString();
    };
    EXPECT_EQ(told("group amateur"), "");
    state->userSources().add({UniqueId::make().text(), "Own", "http://a/x"});
    state->subscribedCategories = std::set<std::string>{"amateur", "stations", "user:Own"};
    sheet->close();
    open();
    machine.http.answers[state->elements().celestrakURL("amateur")] = {"<html>", 10, false, 503};
    machine.http.answers[state->elements().celestrakURL("stations")] = {kStation, 10};
    state->loadData();
    machine.loop.runPosted();
    sheet->refresh();
    EXPECT_EQ(told("group amateur"), "asking…");
    machine.loop.advance(11);
    sheet->refresh();
    EXPECT_EQ(told("group amateur"), "HTTP 503, < 1m ago");
    EXPECT_EQ(told("group stations"), "1 record, < 1m ago");
    EXPECT_EQ(told("source http://a/x"), "no answer, < 1m ago");
    EXPECT_EQ(told("group weather"), "") << "nobody has asked for it";
    EXPECT_EQ(child<SwitchButton>(*sheet, "group amateur").accessibleDescription(),
              "HTTP 503, < 1m ago");
    machine.loop.advance(7200);
    sheet->refresh();
    EXPECT_EQ(told("group stations"), "1 record, 2h ago");
}

// ---- The user's own.

TEST_F(SourcesSectionTest, AddNeedsBothTexts) {
    EXPECT_FALSE(isEnabled("addSource"));
    field("newSourceName").setText("CSN");
    EXPECT_FALSE(isEnabled("addSource"));
    field("newSourceURL").setText("http://a/x");
    EXPECT_TRUE(isEnabled("addSource"));
    field("newSourceName").clear();
    EXPECT_FALSE(isEnabled("addSource"));
}

TEST_F(SourcesSectionTest, AddedSourceIsStoredSubscribedAndLoaded) {
    EXPECT_EQ(disclosure("customSources").detail(), "");
    add("My List", "http://a/x");
    ASSERT_EQ(stored().size(), 1u);
    EXPECT_EQ(stored()[0].name, "My List");
    EXPECT_EQ(stored()[0].url, "http://a/x");
    EXPECT_TRUE(isSubscribed("user:My_List"));
    EXPECT_TRUE(isOn("source http://a/x"));
    EXPECT_EQ(field("newSourceName").text(), "");
    EXPECT_EQ(field("newSourceURL").text(), "");
    EXPECT_FALSE(isEnabled("addSource"));
    EXPECT_EQ(disclosure("customSources").detail(), "1");
    EXPECT_TRUE(state->isLoadingTLEs);
    machine.loop.runPosted();
    EXPECT_THAT(machine.http.requests, ::testing::Contains("http://a/x"));
}

TEST_F(SourcesSectionTest, KnownAddressUnderAnotherNameChangesNothingAndSaysSo) {
    add("A", "http://a/x");
    machine.loop.runPosted();
    add("B", " http://a/x ");
    EXPECT_EQ(stored().size(), 1u);
    EXPECT_TRUE(isSubscribed("user:A"));
    EXPECT_FALSE(isSubscribed("user:B"));
    EXPECT_FALSE(state->isLoadingTLEs);
    EXPECT_EQ(textOf(*sheet, "newSourceURLNote"), "This address is there already, as “A”");
    EXPECT_EQ(field("newSourceName").text(), "B") << "kept for correction";
    EXPECT_EQ(field("newSourceURL").text(), " http://a/x ");
}

TEST_F(SourcesSectionTest, TextThatIsNoWebAddressIsRefusedAndKeptForCorrection) {
    for (const char* bad : {"not an address", "example.org/a.txt", "ftp://a/x", "http://",
                            "file:///etc/passwd", "https:///x"}) {
        add("Odd", bad);
        EXPECT_EQ(stored().size(), 0u) << bad;
        EXPECT_FALSE(isSubscribed("user:Odd")) << bad;
        EXPECT_FALSE(state->isLoadingTLEs) << bad;
        EXPECT_EQ(field("newSourceName").text(), "Odd") << bad;
        EXPECT_EQ(field("newSourceURL").text(), bad);
        const char* why = "An address begins with http:// or https://";
        EXPECT_EQ(textOf(*sheet, "newSourceURLNote"), why) << bad;
        EXPECT_EQ(field("newSourceURL").toolTip(), plainToolTip(why));
        EXPECT_EQ(field("newSourceURL").accessibleDescription(), why);
    }
    field("newSourceURL").setText("https://example.org/a.txt");
    EXPECT_EQ(textOf(*sheet, "newSourceURLNote"), "") << "it is another text now";
    EXPECT_EQ(field("newSourceURL").toolTip(), "");
    click("addSource");
    ASSERT_EQ(stored().size(), 1u);
    EXPECT_EQ(stored()[0].url, "https://example.org/a.txt");
}

TEST_F(SourcesSectionTest, ReturnInTheRowAddsTheSource) {
    disclosure("customSources").setOpen(true);
    sheet->activateWindow();
    for (const char* name : {"newSourceName", "newSourceURL"}) {
        const QString url = QString("http://a/") + name;
        type("newSourceName", name);
        type("newSourceURL", url);
        QTest::keyClick(&field(name), Qt::Key_Return);
        dropOldRows();
        EXPECT_EQ(stored().back().url, url.toStdString());
        EXPECT_TRUE(state->showSettings) << "nothing is applied";
    }
    EXPECT_EQ(stored().size(), 2u);
    type("newSourceName", "Half");
    QTest::keyClick(&field("newSourceName"), Qt::Key_Enter);
    EXPECT_EQ(stored().size(), 2u);
    EXPECT_TRUE(state->showSettings);
    EXPECT_TRUE(field("newSourceURL").hasFocus()) << "what is missing";
}

TEST_F(SourcesSectionTest, BlanksAroundNameAndAddressAreNoPartOfThem) {
    field("newSourceName").setText("  ");
    field("newSourceURL").setText("http://a/x");
    EXPECT_FALSE(isEnabled("addSource"));
    add(" My List ", " http://a/x ");
    ASSERT_EQ(stored().size(), 1u);
    EXPECT_EQ(stored()[0].name, "My List");
    EXPECT_EQ(stored()[0].url, "http://a/x");
}

TEST_F(SourcesSectionTest, SwitchOfASourceActsAtOnce) {
    add("A", "http://a/x");
    machine.loop.runPosted();
    click("source http://a/x");
    EXPECT_FALSE(isSubscribed("user:A"));
    EXPECT_TRUE(state->isLoadingTLEs);
    click("source http://a/x");
    EXPECT_TRUE(isSubscribed("user:A"));
}

TEST_F(SourcesSectionTest, RemovingASourceDropsItsSubscription) {
    add("A", "http://a/x");
    add("B", "http://a/y");
    machine.loop.runPosted();
    const auto& remove = child<QWidget>(*sheet, "remove http://a/x");
    EXPECT_EQ(remove.toolTip(), "Remove this custom URL source");
    click("remove http://a/x");
    dropOldRows();
    ASSERT_EQ(stored().size(), 1u);
    EXPECT_EQ(stored()[0].name, "B");
    EXPECT_FALSE(isSubscribed("user:A"));
    EXPECT_TRUE(isSubscribed("user:B"));
    EXPECT_TRUE(state->isLoadingTLEs);
    EXPECT_EQ(disclosure("customSources").detail(), "1");
    EXPECT_EQ(sheet->findChild<QWidget*>("source http://a/x"), nullptr);
}

TEST_F(SourcesSectionTest, PresetIsAddedOnceAndOfferedAgainWhenRemoved) {
    const auto preset = state->presetSources().at(0);
    ASSERT_EQ(preset.name, "CSN Technologies");
    EXPECT_TRUE(isEnabled("preset CSN Technologies"));
    EXPECT_TRUE(isEnabled("preset AMSAT NASA.all"));
    click("preset CSN Technologies");
    ASSERT_EQ(stored().size(), 1u);
    EXPECT_EQ(stored()[0].url, preset.url);
    EXPECT_TRUE(isSubscribed("user:CSN_Technologies"));
    EXPECT_FALSE(isEnabled("preset CSN Technologies"));
    EXPECT_TRUE(isEnabled("preset AMSAT NASA.all"));
    dropOldRows();
    click(("remove " + preset.url).c_str());
    EXPECT_TRUE(isEnabled("preset CSN Technologies"));
}

TEST_F(SourcesSectionTest, PresetIsNotOfferedWhenItsAddressIsThereUnderAnotherName) {
    add("Mine", QString::fromStdString(state->presetSources().at(1).url));
    EXPECT_FALSE(isEnabled("preset AMSAT NASA.all"));
}

TEST_F(SourcesSectionTest, FocusStaysInTheRowsWhenOneIsRemoved) {
    disclosure("customSources").setOpen(true);
    add("A", "http://a/x");
    add("B", "http://a/y");
    sheet->activateWindow();
    auto& remove = child<QWidget>(*sheet, "remove http://a/x");
    remove.setFocus();
    QTest::keyClick(&remove, Qt::Key_Space);
    dropOldRows();
    ASSERT_TRUE(QApplication::focusWidget());
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "remove http://a/y");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    dropOldRows();
    ASSERT_TRUE(QApplication::focusWidget());
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "newSourceName");
}

TEST_F(SourcesSectionTest, TabGoesThroughTheRowsBeforeTheRowThatAdds) {
    add("A", "http://a/x");
    add("B", "http://a/y");
    QStringList names;
    const QWidget* first = &child<QWidget>(*sheet, "source http://a/x");
    for (const QWidget* w = first; names.size() < 5; w = w->nextInFocusChain()) {
        if (w->focusPolicy() & Qt::TabFocus) names << w->objectName();
    }
    EXPECT_EQ(names, (QStringList{"source http://a/x", "remove http://a/x", "source http://a/y",
                                  "remove http://a/y", "newSourceName"}));
}

TEST_F(SourcesSectionTest, TabComesToStoredRowsFromTheirHeading) {
    state->userSources().add({UniqueId::make().text(), "A", "http://a/x"});
    sheet->reject();
    dropOldRows();
    open();
    QStringList names;
    const QWidget* heading = disclosure("customSources").findChild<QWidget*>("disclosureHeading");
    for (const QWidget* w = heading; names.size() < 4; w = w->nextInFocusChain()) {
        if (w->focusPolicy() & Qt::TabFocus) names << w->objectName();
    }
    EXPECT_EQ(names, (QStringList{"disclosureHeading", "source http://a/x", "remove http://a/x",
                                  "newSourceName"}));
}

}  // namespace
}  // namespace veloran::test
