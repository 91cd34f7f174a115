// The event rules of the form model, on a small form of its own.
#include "platform/form.h"

#include <gtest/gtest.h>

#include <string>
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

TEST_F(FormEvents, ProgramChangesRunTheHandlersOnlyWhenTheValueChanges) {
  form.box.setText("1");
  form.check.setValue(0);
  EXPECT_TRUE(events.empty());
  EXPECT_TRUE(observer.log.empty());

  form.box.setText("22");
  form.check.setValue(1);
  form.check.setValue(1);
  form.label.setCaption("Other");  // labels have no change handling
  EXPECT_EQ(events, (std::vector<std::string>{"box change 22", "check click 1"}));
  EXPECT_EQ(observer.log, (std::vector<std::string>{"control box", "control check", "control label"}));
}

TEST_F(FormEvents, UserActionsGoThroughTheSameRules) {
  form.box.userEdit("12");
  form.box.userKeyUp(keys::up, 1);
  form.check.userClick();
  form.check.userClick();
  form.button.userClick();
  form.item.userClick();
  EXPECT_EQ(events, (std::vector<std::string>{"box change 12", "box keyup 38/1", "check click 1",
                                              "check click 0", "button click", "item click"}));
}

TEST_F(FormEvents, HiddenOrDisabledControlsAndMenusTakeNoUserAction) {
  form.box.setEnabled(false);
  form.check.setVisible(false);
  form.button.setEnabled(false);
  form.top.setVisible(false);  // hides the item with its menu
  form.box.userEdit("5");
  form.box.userKeyUp(keys::enter);
  form.check.userClick();
  form.button.userClick();
  form.item.userClick();
  EXPECT_TRUE(events.empty());
  EXPECT_EQ(form.box.text(), "1");
  EXPECT_EQ(form.check.value(), 0);

  form.top.setVisible(true);
  form.item.setEnabled(false);
  form.item.userClick();
  EXPECT_TRUE(events.empty());
}

TEST_F(FormEvents, TheLengthLimitHoldsForTypingOnly) {
  form.box.userEdit("123");
  form.box.userEdit("1234");  // refused: one character over the limit
  EXPECT_EQ(form.box.text(), "123");
  form.box.setText("123456");  // the program may set more
  EXPECT_EQ(form.box.text(), "123456");
  form.box.userEdit("12345");  // shortening an over-long text is fine
  EXPECT_EQ(form.box.text(), "12345");
}

TEST_F(FormEvents, ActivationRunsOnceAndTheWindowReportsItsOtherEvents) {
  int activations = 0;
  std::vector<std::string> window;
  form.onActivate = [&] { ++activations; };
  form.onKeyDown = [&](int key, int) { window.push_back("key " + std::to_string(key)); };
  form.onMouseDown = [&](int button, int, float x, float y) {
    window.push_back("mouse " + std::to_string(button) + " " + std::to_string(int(x)) + "," +
                     std::to_string(int(y)));
  };
  form.onUnload = [&] { window.push_back("unload"); };
  form.userActivate();
  form.userActivate();
  form.userKeyDown(keys::letterQ);
  form.userMouseDown(1, 0, 10, 20);
  form.userClose();
  EXPECT_EQ(activations, 1);
  EXPECT_EQ(window, (std::vector<std::string>{"key 81", "mouse 1 10,20", "unload"}));
}

TEST_F(FormEvents, TheSurfaceKeepsItsDisplayListAndTextPosition) {
  Surface& surface = form.surface();
  surface.fillBox(8, 8, 128, 98, 15);
  EXPECT_EQ(surface.currentX(), 128);
  EXPECT_EQ(surface.currentY(), 98);
  surface.fillBox(10, 11, 10, 11, 15);
  surface.printText("17");
  ASSERT_EQ(surface.ops().size(), 3u);
  EXPECT_EQ(surface.ops()[2].kind, DrawOp::Kind::Text);
  EXPECT_EQ(surface.ops()[2].x1, 10);
  EXPECT_EQ(surface.ops()[2].y1, 11);
  surface.clear();
  EXPECT_TRUE(surface.ops().empty());
  EXPECT_EQ(observer.log.size(), 4u);  // every change reaches the view
}

}  // namespace
}  // namespace quill
