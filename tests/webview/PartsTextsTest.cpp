#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>

#include "HelperUnderTest.h"
#include "ToolkitFixture.h"
#include "helper/GObjectPtr.h"
#include "helper/layout/ToolkitLayout.h"

namespace zovk::helper {
namespace {

void setLanguage(const char* locale) {
  for (const char* name : {"LANGUAGE", "LC_MESSAGES"}) unsetenv(name);
  setenv("LC_ALL", locale, 1);
}

/// Empty when the view is called `name`, else what is wrong.
std::string wrongLabel(GtkWidget* view, const std::string& name) {
  const GText wrong(gtk_test_accessible_check_property(
      GTK_ACCESSIBLE(view), GTK_ACCESSIBLE_PROPERTY_LABEL, name.c_str()));
  return wrong ? wrong.get() : "";
}

struct Language {
  const char* locale;
  std::vector<std::pair<const char*, const char*>> names;
};

const std::vector<std::pair<const char*, const char*>> kEnglish = {
    {"rejectBtn", "Decline"}, {"confirmBtn", "Agree"},  {"centerConfirmBtn", "Continue"},
    {"returnBtn", "Back"},    {"refreshBtn", "Reload"}, {"crossBtn", "Close"},
    {"contentView", "Page"}};
const std::vector<std::pair<const char*, const char*>> kChinese = {
    {"rejectBtn", "不同意"}, {"confirmBtn", "同意"}, {"centerConfirmBtn", "继续"},
    {"returnBtn", "返回"},   {"refreshBtn", "刷新"}, {"crossBtn", "关闭"},
    {"contentView", "页面"}};
const std::vector<std::pair<const char*, const char*>> kTaiwan = {
    {"rejectBtn", "不同意"}, {"confirmBtn", "同意"},     {"centerConfirmBtn", "繼續"},
    {"returnBtn", "返回"},   {"refreshBtn", "重新載入"}, {"crossBtn", "關閉"},
    {"contentView", "頁面"}};

class LayoutIn : public ToolkitFixture,
                 public testing::WithParamInterface<std::tuple<Language, const char*>> {};

TEST_P(LayoutIn, IsSpokenOfInThePlayersLanguage) {
  const auto& [language, name] = GetParam();
  setLanguage(language.locale);
  const ToolkitLayout layout(HELPER_BUNDLE, name, [](const std::string&) {});
  for (const auto& [outlet, text] : language.names) {
    EXPECT_EQ(wrongLabel(layout.outlet(outlet), text), "") << outlet;
  }
}

TEST_P(LayoutIn, SaysThatOnItsButtonsOrInTheirHints) {
  const auto& [language, name] = GetParam();
  setLanguage(language.locale);
  const ToolkitLayout layout(HELPER_BUNDLE, name, [](const std::string&) {});
  for (const auto& [outlet, text] : language.names) {
    GtkWidget* view = layout.outlet(outlet);
    if (!GTK_IS_BUTTON(view)) continue;
    EXPECT_TRUE(gtk_test_accessible_has_role(GTK_ACCESSIBLE(view), GTK_ACCESSIBLE_ROLE_BUTTON));
    const char* label = gtk_button_get_label(GTK_BUTTON(view));
    EXPECT_STREQ(label != nullptr ? label : gtk_widget_get_tooltip_text(view), text) << outlet;
  }
  EXPECT_TRUE(gtk_test_accessible_has_role(GTK_ACCESSIBLE(layout.outlet("contentView")),
                                           GTK_ACCESSIBLE_ROLE_REGION));
}

INSTANTIATE_TEST_SUITE_P(
    Helper, LayoutIn,
    testing::Combine(
        testing::Values(Language{"C.UTF-8", kEnglish}, Language{"en_GB.UTF-8", kEnglish},
                        Language{"fr_FR.UTF-8", kEnglish}, Language{"zh_CN.UTF-8", kChinese},
                        Language{"zh_SG.UTF-8", kChinese}, Language{"zh_TW.UTF-8", kTaiwan}),
        testing::Values("ZOVKPopupView", "ZOVKPopupViewLandscape")),
    [](const auto& test) {
      std::string name = std::get<0>(test.param).locale;
      name = name.substr(0, name.find('.'));
      std::erase(name, '_');
      return name + std::get<1>(test.param);
    });

class LayoutTextsFile : public ToolkitFixture {
 protected:
  /// Returns the name of a studio's cross with this text file beside its layout.
  std::string crossWith(const std::string& texts) {
    setLanguage("de_DE.UTF-8");
    std::ofstream(directory_.path() / "Own.ui")
        << "<interface><object class='GtkButton' id='crossBtn'><property "
           "name='label'>Weg</property>"
           "</object></interface>";
    std::ofstream(directory_.path() / "ZOVKPopupTexts.ini") << texts;
    const ToolkitLayout layout(directory_.path().string(), "Own", [](const std::string&) {});
    return gtk_button_get_label(GTK_BUTTON(layout.outlet("crossBtn")));
  }

  ScratchDirectory directory_;
};

TEST_F(LayoutTextsFile, CanAddALanguage) {
  EXPECT_EQ(crossWith("[crossBtn]\nlabel=Close\nlabel[de]=Schließen\n"), "Schließen");
}

TEST_F(LayoutTextsFile, ThatSaysNothingOfAViewLeavesItItsLayoutsText) {
  EXPECT_EQ(crossWith("[returnBtn]\nlabel=Back\n"), "Weg");
}

TEST_F(LayoutTextsFile, ThatCannotBeReadLeavesTheLayoutsText) {
  EXPECT_EQ(crossWith("[[=\n==\xff"), "Weg");
}

}  // namespace
}  // namespace zovk::helper
