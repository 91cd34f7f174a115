// The design tables of the window: main, information and properties pages.
#include "screens/window_design.h"

#include <utility>

namespace quill {

namespace {

constexpr bool kHidden = false;

ControlDesign design(ControlKind kind, std::string text, TwipRect rect, bool visible = true) {
  ControlDesign d;
  d.kind = kind;
  d.text = std::move(text);
  d.rect = rect;
  d.visible = visible;
  return d;
}

ControlDesign label(std::string caption, TwipRect rect, std::optional<Rgb> background,
                    bool visible = true) {
  ControlDesign d = design(ControlKind::Label, std::move(caption), rect, visible);
  d.background = background;
  return d;
}

ControlDesign textBox(std::string text, TwipRect rect, int maxLength = 0) {
  ControlDesign d = design(ControlKind::TextBox, std::move(text), rect);
  d.maxLength = maxLength;
  return d;
}

ControlDesign checkBox(std::string caption, TwipRect rect, Rgb background, int value,
                       bool visible = true) {
  ControlDesign d = design(ControlKind::CheckBox, std::move(caption), rect, visible);
  d.background = background;
  d.value = value;
  return d;
}

ControlDesign button(std::string caption, TwipRect rect, bool visible = true,
                     bool enabled = true) {
  ControlDesign d = design(ControlKind::CommandButton, std::move(caption), rect, visible);
  d.enabled = enabled;
  return d;
}

ControlDesign picture(TwipRect rect, Illustration illustration) {
  ControlDesign d = design(ControlKind::PictureBox, "", rect, kHidden);
  d.background = illustration.whiteBackground ? std::optional<Rgb>(colours::white) : std::nullopt;
  d.illustration = std::move(illustration);
  return d;
}

// A control as assistive technology names it.
ControlDesign named(ControlDesign design, std::string name) {
  design.accessibleName = std::move(name);
  return design;
}

ControlDesign hiddenTextBox(TwipRect rect) {
  ControlDesign d = textBox("", rect);
  d.visible = false;
  d.enabled = false;
  return d;
}

ControlDesign blueTextLabel(std::string caption, TwipRect rect) {
  ControlDesign d = label(std::move(caption), rect, std::nullopt, kHidden);
  d.foreground = colours::blue;
  return d;
}

Illustration marked(std::initializer_list<MarkedCell> cells, bool whiteBackground = true) {
  return Illustration{whiteBackground, std::vector<MarkedCell>(cells)};
}

constexpr auto S = MarkStyle::Strokes;
constexpr auto T = MarkStyle::Ticks;
constexpr auto F = MarkStyle::Fill;

// Properties page check boxes: two lines high, so the long captions wrap.
constexpr int kPairHeight = 495;
constexpr int kNarrowPair = 2055;
constexpr int kWidePair = 2535;
constexpr TwipRect kIllustrationSize{0, 0, 1935, 1455};
TwipRect at(int left, int top, TwipRect size) { return {left, top, size.width, size.height}; }

const std::string kLabel13 =
    "A magic square is a square consisting of a set of numbers (all different) such that the "
    "sum of every row, column, and main diagonal is the same.";

const std::string kLabel15 =
    "A \"complete\" magic square (the kind this program creates),  has all the properties of a "
    "magic square, but differs from ordinary magic squares because the sum of every minor "
    "diagonal is also the same (if you wrap around the square while counting). Because all the "
    "diagonal sums are constant in these squares, rows or columns can be shifted vertically or "
    "horizontally, and the result will still be a \"complete\" magic square. There are also "
    "other properties for \"5 by 5\" complete magic squares. This program makes completely "
    "random \"complete\" magic squares. ";

}  // namespace

MainForm::MainForm()
    : options2(*this, "options2", "Options", nullptr),
      quit(*this, "quit", "Quit", &options2),
      options1(*this, "options1", "Options", nullptr),
      aprinting(*this, "aprinting", "Abort printing", &options1),
      newsquare(*this, "newsquare", "New Square", &options1),
      startover(*this, "startover", "Start Over", &options1),
      hint(*this, "hint", "Hint", &options1),
      qplaying(*this, "qplaying", "Quit playing", &options1),
      printoptions(*this, "printoptions", "Print Options", nullptr),
      panswers(*this, "panswers", "Print only completed Squares", &printoptions),
      ppuzzles(*this, "ppuzzles", "Print only Puzzles", &printoptions),
      pboth(*this, "pboth", "Print both Puzzles and Answers", &printoptions, true),
      printer(*this, "printer", "Printer...", &printoptions),
      answers(*this, "answers", "Highlight Answers?", &printoptions),
      highlighted(*this, "highlighted", "Yes", &answers, true),
      nhighlighted(*this, "nhighlighted", "No", &answers),
      puzzlemode(*this, "puzzlemode", "Puzzle-mode", nullptr),
      difficulty(*this, "difficulty", "Difficulty", &puzzlemode),
      easy(*this, "easy", "Easy", &difficulty),
      challenging(*this, "challenging", "Challenging", &difficulty, true),
      chooseproperties(*this, "chooseproperties", "Choose Magic Square Properties", &puzzlemode),
      size(*this, "size", "Size of Square", nullptr),
      sqr5(*this, "sqr5", "5 by 5", &size, true),
      sqr7(*this, "sqr7", "7 by 7", &size),
      sqr11(*this, "sqr11", "11 by 11", &size),
      sqr13(*this, "sqr13", "13 by 13", &size),
      sqr17(*this, "sqr17", "17 by 17", &size),
      sqr19(*this, "sqr19", "19 by 19", &size),
      sqr23(*this, "sqr23", "23 by 23", &size),
      sqr29(*this, "sqr29", "29 by 29", &size),
      larger(*this, "larger", "Larger Size", &size),

      Label20(*this, "Label20",
              label("Allow how many random starting numbers?", {720, 360, 3135, 255}, colours::orange)),
      Text7(*this, "Text7", named(textBox("10", {3840, 360, 495, 285}, 9), "Allow how many random starting numbers?")),
      Check1(*this, "Check1",
             checkBox("Choose Random Starting Number", {720, 840, 2175, 375}, colours::green, 0)),
      Label2(*this, "Label2",
             label("Size of Square (Prime Number):", {3720, 840, 2295, 255}, colours::lightCyan)),
      Text2(*this, "Text2", named(textBox("5", {6000, 840, 495, 285}, 6), "Size of Square (Prime Number):")),
      Label1(*this, "Label1", label("Print how many squares?", {3720, 1320, 1935, 255}, colours::green)),
      Text1(*this, "Text1", named(textBox("25", {5640, 1320, 495, 285}), "Print how many squares?")),
      Check12(*this, "Check12", checkBox("Fill Page", {6720, 1320, 1215, 255}, colours::orange, 1)),
      Label9(*this, "Label9", label("Starting Number:", {720, 1680, 1335, 255}, colours::green)),
      text4(*this, "text4", named(textBox("1", {2040, 1680, 495, 285}, 9), "Starting Number:")),
      Command1(*this, "Command1", button("Create \"Complete\" Magic Square(s)", {4080, 1920, 1695, 735})),
      Label4(*this, "Label4",
             label("How many (5 by 5) \"Complete\" Magic Squares are there?: ",
                   {6000, 1920, 5295, 255}, colours::cyan)),
      Label10(*this, "Label10", label("Distance Between Numbers:", {720, 2160, 2175, 255}, colours::green)),
      Text5(*this, "Text5", named(textBox("1", {2880, 2160, 495, 285}, 9), "Distance Between Numbers:")),
      Label3(*this, "Label3",
             label("There are 576 fundamental squares.", {6000, 2160, 5295, 255}, colours::white)),
      Label5(*this, "Label5",
             label("Each Square yields 25 other squares by row and column shift: (576 * 25 = 14400).",
                   {6000, 2400, 5295, 495}, colours::white)),
      Label18(*this, "Label18",
              label("Last number equals: 25", {720, 2640, 2175, 255}, colours::lightGreen)),
      Label6(*this, "Label6",
             label("Each Square can also be rotated once to produce a second square: (14400 * 2 = 28800).",
                   {6000, 2880, 5295, 495}, colours::white)),
      Label8(*this, "Label8", label("Leave how many blanks?", {3120, 3240, 1935, 255}, colours::cyan)),
      Text3(*this, "Text3", named(textBox("100", {5040, 3240, 495, 285}), "Leave how many blanks?")),
      Label7(*this, "Label7",
             label("Therefore, there are exactly 28800 \"Complete\" Magic Squares of (5 by 5). ",
                   {6000, 3360, 5295, 495}, colours::white)),
      Command2(*this, "Command2", button("Info on \"Complete\" Magic Squares", {3120, 3840, 1575, 615})),
      Label11(*this, "Label11", label("Magic Total = 65", {6000, 4080, 2055, 255}, colours::green)),
      Command4(*this, "Command4", button("Practice Solving Squares", {3120, 4680, 1815, 495})),
      Label19(*this, "Label19", blueTextLabel("(Larger than Page)", {3120, 5280, 1815, 255})),
      Text6(*this, "Text6", hiddenTextBox({120, 120, 375, 270})),

      Label12(*this, "Label12",
              label("What is a Magic Square?", {120, 120, 2775, 255}, colours::cyan, kHidden)),
      Label13(*this, "Label13", label(kLabel13, {120, 480, 2895, 975}, colours::white, kHidden)),
      Label14(*this, "Label14",
              label("What is a \"Complete\" Magic Square?", {120, 1920, 2775, 255}, colours::cyan, kHidden)),
      Label15(*this, "Label15", label(kLabel15, {120, 2280, 2895, 3015}, colours::white, kHidden)),
      Command3(*this, "Command3",
               button("Back to Main Page", {3360, 1920, 1815, 495}, kHidden, false)),
      Label16(*this, "Label16",
              label("         Major Diagonal", {3360, 2760, 1815, 255}, colours::green, kHidden)),
      Picture1(*this, "Picture1",
               named(picture({3360, 3240, 1935, 1455},
                       marked({{1, 1, F}, {2, 2, F}, {3, 3, F}, {4, 4, F}, {5, 5, F}})),
                     "Major diagonal: a 5 by 5 grid with its main diagonal marked, from the top left to the bottom right corner")),
      Label17(*this, "Label17",
              label("         Minor Diagonal", {6240, 2760, 1815, 255}, colours::green, kHidden)),
      Picture2(*this, "Picture2",
               named(picture({6240, 3240, 1935, 1455},
                       marked({{4, 1, F}, {5, 2, F}, {1, 3, F}, {2, 4, F}, {3, 5, F}}, false)),
                     "Minor diagonal: a 5 by 5 grid with a broken diagonal marked: row 1 column 4, row 2 column 5, row 3 column 1, row 4 column 2, row 5 column 3")),

      Label22(*this, "Label22",
              label("Properties for Magic Squares:", {240, 120, 3255, 255}, colours::magenta, kHidden)),
      Check2(*this, "Check2",
             checkBox("Include Main Diagonals and Lines", {240, 720, 3135, 375}, colours::green, 1, kHidden)),
      Check3(*this, "Check3",
             checkBox("Include All Diagonals", {240, 1440, 3135, 375}, colours::green, 0, kHidden)),
      Command6(*this, "Command6", button("Done", {3480, 1440, 1215, 495}, kHidden)),
      Label21(*this, "Label21",
              label("Properties for \"5 by 5\" Magic Squares:", {240, 2880, 3255, 255}, colours::magenta,
                    kHidden)),
      Check4(*this, "Check4",
             checkBox("Include Only Main Cross-Diagonals", {240, 3600, kNarrowPair, kPairHeight},
                      colours::green, 0, kHidden)),
      Check5(*this, "Check5",
             checkBox("Include All Cross-Diagonals", {240, 4200, kNarrowPair, kPairHeight}, colours::green,
                      0, kHidden)),
      Check6(*this, "Check6",
             checkBox("Include Only Main Cross-lines", {2520, 3600, kNarrowPair, kPairHeight},
                      colours::green, 0, kHidden)),
      Check7(*this, "Check7",
             checkBox("Include All Cross-Lines", {2520, 4200, kNarrowPair, kPairHeight}, colours::green, 0,
                      kHidden)),
      Check8(*this, "Check8",
             checkBox("Include Only Main Scattered-Cross-Diagonals", {4800, 3600, kWidePair, kPairHeight},
                      colours::green, 0, kHidden)),
      Check9(*this, "Check9",
             checkBox("Include All Scattered-Cross-Diagonals", {4800, 4200, kWidePair, kPairHeight},
                      colours::green, 0, kHidden)),
      Check10(*this, "Check10",
              checkBox("Include Only Main Scattered-Cross-Lines", {7560, 3600, kWidePair, kPairHeight},
                       colours::green, 0, kHidden)),
      Check11(*this, "Check11",
              checkBox("Include All Scattered-Cross-Lines", {7560, 4200, kWidePair, kPairHeight},
                       colours::green, 0, kHidden)),
      Picture3(*this, "Picture3",
               named(picture(at(120, 5280, kIllustrationSize),
                       marked({{1, 1, S}, {3, 1, S}, {2, 2, S}, {1, 3, S}, {3, 3, S},
                               {3, 2, T}, {5, 2, T}, {4, 3, T}, {3, 4, T}, {5, 4, T}})),
                     "Cross-diagonals: two X-shaped groups of five cells marked, one centred on row 2 column 2, one on row 3 column 4")),
      Picture6(*this, "Picture6",
               named(picture(at(2400, 5280, kIllustrationSize),
                       marked({{2, 1, S}, {1, 2, S}, {2, 2, S}, {3, 2, S}, {2, 3, S},
                               {4, 3, T}, {3, 4, T}, {4, 4, T}, {5, 4, T}, {4, 5, T}})),
                     "Cross-lines: two plus-shaped groups of five cells marked, one centred on row 2 column 2, one on row 4 column 4")),
      Picture5(*this, "Picture5",
               named(picture(at(4800, 5280, kIllustrationSize),
                       marked({{1, 1, F}, {5, 1, F}, {3, 3, F}, {1, 5, F}, {5, 5, F}})),
                     "Scattered cross-diagonal: the four corners and the centre marked")),
      Picture4(*this, "Picture4",
               named(picture(at(7560, 5280, kIllustrationSize),
                       marked({{3, 1, F}, {1, 3, F}, {3, 3, F}, {5, 3, F}, {3, 5, F}})),
                     "Scattered cross-line: the middle of each edge and the centre marked")) {
  setCaption(kProgramTitle);
  setClientArea({0, 0, kDesignClientWidth, kDesignClientHeight});
}

namespace {

// Which page a control belongs to, and what showing and hiding that page does with it.
enum class Rule {
  Shown,             // shown with its page
  Available,         // shown and enabled with its page, hidden and disabled without
  EnabledByRule,     // shown with its page; hidden and disabled without; enabled by a rule of its own
  ShownByRule,       // hidden without its page; shown by a rule of its own
};
struct ControlPlace {
  Control MainForm::*control;
  Screen page;
  Rule rule;
};

constexpr ControlPlace kControlPlaces[] = {
    {&MainForm::Label20, Screen::Main, Rule::Shown},
    {&MainForm::Text7, Screen::Main, Rule::Shown},
    {&MainForm::Check1, Screen::Main, Rule::Shown},
    {&MainForm::Label2, Screen::Main, Rule::Shown},
    {&MainForm::Text2, Screen::Main, Rule::Available},
    {&MainForm::Label1, Screen::Main, Rule::Available},
    {&MainForm::Text1, Screen::Main, Rule::Available},
    {&MainForm::Check12, Screen::Main, Rule::Shown},
    {&MainForm::Label9, Screen::Main, Rule::Shown},
    {&MainForm::text4, Screen::Main, Rule::Available},
    {&MainForm::Command1, Screen::Main, Rule::EnabledByRule},  // stays disabled above 101
    {&MainForm::Label4, Screen::Main, Rule::Shown},
    {&MainForm::Label10, Screen::Main, Rule::Shown},
    {&MainForm::Text5, Screen::Main, Rule::Available},
    {&MainForm::Label3, Screen::Main, Rule::Shown},
    {&MainForm::Label5, Screen::Main, Rule::Shown},
    {&MainForm::Label18, Screen::Main, Rule::Shown},
    {&MainForm::Label6, Screen::Main, Rule::Shown},
    {&MainForm::Label8, Screen::Main, Rule::Available},
    {&MainForm::Text3, Screen::Main, Rule::Available},
    {&MainForm::Label7, Screen::Main, Rule::Shown},
    {&MainForm::Command2, Screen::Main, Rule::Available},
    {&MainForm::Label11, Screen::Main, Rule::Shown},
    {&MainForm::Command4, Screen::Main, Rule::EnabledByRule},  // only for squares that fit the page
    {&MainForm::Label19, Screen::Main, Rule::ShownByRule},     // "(Larger than Page)"

    {&MainForm::Label12, Screen::Information, Rule::Shown},
    {&MainForm::Label13, Screen::Information, Rule::Shown},
    {&MainForm::Label14, Screen::Information, Rule::Shown},
    {&MainForm::Label15, Screen::Information, Rule::Shown},
    {&MainForm::Command3, Screen::Information, Rule::Available},
    {&MainForm::Label16, Screen::Information, Rule::Shown},
    {&MainForm::Picture1, Screen::Information, Rule::Shown},
    {&MainForm::Label17, Screen::Information, Rule::Shown},
    {&MainForm::Picture2, Screen::Information, Rule::Shown},

    {&MainForm::Label22, Screen::Properties, Rule::Shown},
    {&MainForm::Check2, Screen::Properties, Rule::Shown},
    {&MainForm::Check3, Screen::Properties, Rule::Shown},
    {&MainForm::Command6, Screen::Properties, Rule::Shown},
    {&MainForm::Label21, Screen::Properties, Rule::Shown},
    {&MainForm::Check4, Screen::Properties, Rule::Shown},
    {&MainForm::Check5, Screen::Properties, Rule::Shown},
    {&MainForm::Check6, Screen::Properties, Rule::Shown},
    {&MainForm::Check7, Screen::Properties, Rule::Shown},
    {&MainForm::Check8, Screen::Properties, Rule::Shown},
    {&MainForm::Check9, Screen::Properties, Rule::Shown},
    {&MainForm::Check10, Screen::Properties, Rule::Shown},
    {&MainForm::Check11, Screen::Properties, Rule::Shown},
    {&MainForm::Picture3, Screen::Properties, Rule::Shown},
    {&MainForm::Picture6, Screen::Properties, Rule::Shown},
    {&MainForm::Picture5, Screen::Properties, Rule::Shown},
    {&MainForm::Picture4, Screen::Properties, Rule::Shown},
};

// A menu item on each screen (main, information, properties, run, practice):
// shown (or enabled), hidden (or disabled), or kept as it is.
enum Mark { Y, N, K };
struct MenuPlace {
  MenuItem MainForm::*item;
  bool enabling;  // the marks set its enabled state rather than its visibility
  Mark on[5];
};

constexpr MenuPlace kMenuPlaces[] = {
    // item                          main info props run practice
    {&MainForm::options2, false, {Y, N, N, N, N}},
    {&MainForm::printoptions, false, {Y, Y, Y, N, N}},
    {&MainForm::puzzlemode, false, {Y, Y, Y, N, N}},
    {&MainForm::size, false, {Y, Y, Y, N, N}},
    {&MainForm::chooseproperties, true, {Y, N, N, K, K}},
    {&MainForm::options1, false, {N, N, N, Y, Y}},
    {&MainForm::aprinting, false, {K, K, K, Y, N}},
    {&MainForm::newsquare, false, {K, K, K, N, Y}},
    {&MainForm::startover, false, {K, K, K, N, Y}},
    {&MainForm::hint, false, {K, K, K, N, Y}},
    {&MainForm::qplaying, false, {K, K, K, N, Y}},
};

}  // namespace

void MainForm::showScreen(Screen screen) {
  for (const ControlPlace& place : kControlPlaces) {
    Control& control = this->*place.control;
    const bool shown = place.page == screen;
    if (place.rule != Rule::ShownByRule || !shown) control.setVisible(shown);
    if (place.rule == Rule::Available) control.setEnabled(shown);
    if (place.rule == Rule::EnabledByRule && !shown) control.setEnabled(false);
  }
  for (const MenuPlace& place : kMenuPlaces) {
    const Mark mark = place.on[static_cast<int>(screen)];
    if (mark == K) continue;
    MenuItem& item = this->*place.item;
    if (place.enabling) {
      item.setEnabled(mark == Y);
    } else {
      item.setVisible(mark == Y);
    }
  }
}

}  // namespace quill
