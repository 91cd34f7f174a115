// The event rules of the form model, on a small form of its own.
#include "platform/form.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace quill {
namespace {

ControlDesign design(ControlKind kind, std::string text = "", int value = 0, int maxLength = 0) {
  ControlDesign d;
  d.kind = kind;
  d.text = std::move(text);
  d.value = value;
  d.maxLength = maxLength;
  return d;
}

struct RecordingObserver : FormObserver {
  std::vector<std::string> log;
  void controlChanged(const Control& c) override { log.push_back("control " + c.name()); }
  void focusRequested(const Control& c) override { log.push_back("focus " + c.name()); }
  void menuChanged(const MenuItem& m) override { log.push_back("menu " + m.name()); }
  void captionChanged(const std::string& caption) override { log.push_back("caption " + caption); }
  void surfaceChanged() override { log.push_back("surface"); }
};

struct SmallForm : Form {
  Control box{*this, "box", design(ControlKind::TextBox, "1", 0, 3)};
  Control check{*this, "check", design(ControlKind::CheckBox, "Check", 0)};
  Control button{*this, "button", design(ControlKind::CommandButton, "Go")};
  Control label{*this, "label", design(ControlKind::Label, "Caption")};
  MenuItem top{*this, "top", "Top", nullptr};
  MenuItem item{*this, "item", "Item", &top};
};

class FormEvents : public ::testing::Test {
 protected:
  FormEvents() {
    form.setObserver(&observer);
    form.box.onChange = [this] { events.push_back("box change " + form.box.text()); };
    form.check.onClick = [this] { events.push_back("check click " + std::to_string(form.check.value())); };
    form.button.onClick = [this] { events.push_back("button click"); };
    form.item.onClick = [this] { events.push_back("item click"); };
    form.box.onKeyUp = [this](int key, int shift) {
      events.push_back("box keyup " + std::to_string(key) + "/" + std::to_string(shift));
    };
  }
  SmallForm form;
  RecordingObserver observer;
  std::vector<std::string> events;
};

// A program-set value runs the change handling only when it changes; user
// actions go through the same rules; hidden or disabled controls and menu
// items (also under a hidden menu) take none; the length limit holds for
// typing only.
TEST_F(FormEvents, ChangesRunTheHandlersByTheSameRulesForProgramAndUser) {
  form.box.setText("1");
  form.check.setValue(0);
  EXPECT_TRUE(observer.log.empty());
  form.box.setText("22");
  form.check.setValue(1);
  form.check.setValue(1);
  form.label.setCaption("Other");  // labels have no change handling
  EXPECT_EQ(observer.log, (std::vector<std::string>{"control box", "control check", "control label"}));
  form.box.userEdit("123");
  form.box.userEdit("1234");  // one character over the limit
  form.box.userKeyUp(keys::up, 1);
  form.check.userClick();
  form.button.userClick();
  form.item.userClick();
  EXPECT_EQ(events, (std::vector<std::string>{"box change 22", "check click 1", "box change 123", "box keyup 38/1",
                                              "check click 0", "button click", "item click"}));
  form.box.setText("123456");  // the program may set more
  form.box.userEdit("12345");  // and the user may shorten it
  EXPECT_EQ(form.box.text(), "12345");

  events.clear();
  form.box.setEnabled(false);
  form.check.setVisible(false);
  form.button.setEnabled(false);
  form.top.setVisible(false);
  form.box.userEdit("5");
  form.box.userKeyUp(keys::enter);
  form.check.userClick();
  form.button.userClick();
  form.item.userClick();
  form.top.setVisible(true);
  form.item.setEnabled(false);
  form.item.userClick();
  EXPECT_TRUE(events.empty());
  EXPECT_EQ(form.box.text() + std::to_string(form.check.value()), "123450");
}

TEST_F(FormEvents, ActivationRunsOnceAndTheWindowReportsItsOtherEvents) {
  int activations = 0;
  form.onActivate = [&] { ++activations; };
  form.onKeyDown = [&](int key, int) { events.push_back("key " + std::to_string(key)); };
  form.onMouseDown = [&](int button, int, float x, float y) {
    events.push_back("mouse " + std::to_string(button) + " " + std::to_string(int(x)) + "," + std::to_string(int(y)));
  };
  form.onUnload = [&] { events.push_back("unload"); };
  form.userActivate();
  form.userActivate();
  form.userKeyDown(keys::letterQ);
  form.userMouseDown(1, 0, 10, 20);
  form.userClose();
  EXPECT_EQ(activations, 1);
  EXPECT_EQ(events, (std::vector<std::string>{"key 81", "mouse 1 10,20", "unload"}));

  // The surface keeps its display list and its text position, and tells the view.
  Surface& surface = form.surface();
  surface.fillBox(8, 8, 128, 98, 15);
  EXPECT_EQ(std::pair(surface.currentX(), surface.currentY()), std::pair(128.0f, 98.0f));
  surface.fillBox(10, 11, 10, 11, 15);
  surface.printText("17");
  ASSERT_EQ(surface.ops().size(), 3u);
  EXPECT_EQ(std::tuple(surface.ops()[2].kind, surface.ops()[2].x1, surface.ops()[2].y1),
            std::tuple(DrawOp::Kind::Text, 10.0f, 11.0f));
  surface.clear();
  EXPECT_TRUE(surface.ops().empty());
  EXPECT_EQ(observer.log.size(), 4u);
}

}  // namespace
}  // namespace quill
