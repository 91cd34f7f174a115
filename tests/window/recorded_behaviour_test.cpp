// The same seed gives the same squares, puzzles, draws, yields, pages and
// captions: seeded sessions, driven only through the user's actions (sizes,
// inputs, menus, property boxes, runs with and without aborts, practice with
// clicks and answers), each group digested (every printed page's drawing and
// visible controls, every title seen at a yield, the counts of draws, yields,
// maximises and refreshes, the final state of every control and menu item)
// and held to the digest recorded when the behaviour was last meant to change.
// After an intended change: QUILLION_PRINT_DIGESTS=1 prints the new digests.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "support/window_fixture.h"

namespace quill::testing {
namespace {

class Digest {
 public:
  void add(const std::string& text) {
    for (const unsigned char c : text) step(c);
    step(0xff);
  }
  void add(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    add(std::string(text));
  }
  std::uint64_t value() const { return hash_; }

 private:
  void step(unsigned char c) { hash_ = (hash_ ^ c) * 1099511628211ULL; }
  std::uint64_t hash_ = 1469598103934665603ULL;
};

struct Picks {
  RandomSource random;
  int pick(int count) { return static_cast<int>(random.next() * count); }
};

void digestWindow(Digest& d, const MainWindow& w) {
  for (const Control* c : w.controls()) {
    d.add(c->name() + (c->visible() ? "V" : "-") + (c->enabled() ? "E" : "-") + c->text() + c->accessibleName());
    for (const double v : {c->value() * 1.0, c->rect().left * 1.0, c->rect().top * 1.0, c->maxLength() * 1.0}) d.add(v);
  }
  for (const MenuItem* m : w.menuItems()) {
    d.add(m->name() + (m->visible() ? "V" : "-") + (m->enabled() ? "E" : "-") + (m->checked() ? "C" : "-"));
  }
  d.add(w.caption());
}

// One session: settings drawn from the seed, then a run or a practice.
void playSession(Digest& d, std::uint64_t seed, bool practice, bool fractionalBlanks) {
  Picks p{RandomSource(seed * 7919)};
  FakePlatform platform(seed);
  auto window = std::make_unique<MainWindow>(platform);
  MainWindow& w = *window;
  platform.attach(&w);
  w.userActivate();
  if (p.pick(3) == 0) {  // any size first, and an arrow key from it
    const char* const odd[] = {"7.4", "999983", "x", "1E+99"};
    retype(w.Text2, p.pick(8) ? std::to_string(p.pick(300) - 20) : odd[p.pick(4)]);
    w.Text2.userKeyUp(p.pick(2) ? keys::up : keys::down);
  }
  const int sizes[] = {5, 5, 5, 7, 11, 13, 17, 19, 23, 29, 31, 53, 101};
  const int n = sizes[p.pick(practice ? 5 : 13)];
  if (n <= 29 && p.pick(2) == 0) {
    w.findMenuItem("sqr" + std::to_string(n))->userClick();
  } else {
    retype(w.Text2, std::to_string(n));
  }
  if (p.pick(4) == 0) w.Text2.userKeyUp(keys::up), w.Text2.userKeyUp(keys::down);
  const char* const starts[] = {"1", "1", "-50", "1000", ".5", "-3", "99999", "0"};
  const char* const distances[] = {"1", "1", "2", "-1", ".25", "0", "3"};
  if (p.pick(2)) retype(w.text4, starts[p.pick(8)]);
  if (p.pick(2)) retype(w.Text5, distances[p.pick(7)]);
  const char* const blanks[] = {"1", "5", "20", "100", "0", "3"};
  const char* const fractions[] = {"2.5", "1.5", "7.25"};
  retype(w.Text3, fractionalBlanks ? fractions[p.pick(3)] : blanks[p.pick(6)]);
  if (!practice) {
    const int count = p.pick(6);
    if (count < 3) retype(w.Text1, count == 0 ? "1" : count == 1 ? "3" : "0");
    if (count == 3) w.Check12.userClick();
  }
  if (p.pick(3) == 0) w.Check1.userClick();
  if (p.pick(3) == 0) retype(w.Text7, p.pick(2) ? "1" : "500");
  MenuItem* const print[] = {&w.panswers, &w.ppuzzles, &w.pboth};
  print[p.pick(3)]->userClick();
  if (p.pick(3) == 0) w.nhighlighted.userClick();
  if (p.pick(2) == 0) w.easy.userClick();
  if (p.pick(2) == 0) {
    w.chooseproperties.userClick();
    digestWindow(d, w);
    Control* const boxes[] = {&w.Check2, &w.Check3, &w.Check4, &w.Check5, &w.Check6,
                              &w.Check7, &w.Check8, &w.Check9, &w.Check10, &w.Check11};
    for (int k = p.pick(6); k > 0; --k) boxes[p.pick(10)]->userClick();
    w.Command6.userClick();
  }
  if (p.pick(5) == 0) {
    w.Command2.userClick();
    digestWindow(d, w);
    w.Command3.userClick();
  }
  digestWindow(d, w);

  std::string lastCaption;
  const auto noteCaption = [&] {
    if (w.caption() == lastCaption) return;
    d.add(lastCaption = w.caption());
    digestWindow(d, w);
    if (!practice) return;
    for (const DrawOp& op : w.surface().ops()) d.add(op.text + std::to_string(op.x1 + op.y1));
  };
  if (!practice) {
    const int abortAt = p.pick(3) == 0 ? 1 + p.pick(400) : 5000;
    platform.onYield = [&](int k) {
      noteCaption();
      if (p.pick(40) == 0) w.userKeyDown(65 + p.pick(16));  // keys other than Q do nothing
      if (k != abortAt && k <= 4000) return;
      if (p.pick(2)) {
        w.aprinting.userClick();
      } else {
        w.userKeyDown(keys::letterQ);
      }
    };
    w.Command1.userClick();
  } else {
    int solved = 0, steps = 0;
    platform.onYield = [&](int) {
      noteCaption();
      if (++steps > 3000) return w.qplaying.userClick();
      if (!playing(w)) return;
      // Now and then a click on any cell first; then the first blank, answered
      // now and then wrongly or with a request.
      if (p.pick(8) == 0) {
        w.userMouseDown(1, 0, static_cast<float>(8 + p.pick(w.cellWidth() * 5)), static_cast<float>(8 + p.pick(90)));
      }
      for (int y = 1; y <= w.state().squareSize; ++y) {
        for (int x = 1; x <= w.state().squareSize; ++x) {
          if (!isBlank(w.square().squareNumbers[x][y])) continue;
          clickCell(w, x, y);
          const int mode = p.pick(10);
          char answer[32];
          std::snprintf(answer, sizeof answer, "%.17g", w.square().squareRanks[x][y]);
          w.Text6.userEdit(mode == 0 ? "x" : mode == 1 ? "12345" : answer);
          w.Text6.userKeyDown(keys::enter);
          if (p.pick(40) == 0) w.newsquare.userClick();
          if (p.pick(80) == 0) w.startover.userClick();
          return;
        }
      }
      if (++solved > 6) w.qplaying.userClick();
    };
    w.Command4.userClick();
  }
  for (const PrintedPage& page : platform.pages) {
    d.add("page");
    for (const DrawOp& op : page.drawing) {
      for (const double v : {static_cast<double>(op.kind), static_cast<double>(op.x1), static_cast<double>(op.y1),
                             static_cast<double>(op.x2), static_cast<double>(op.y2), static_cast<double>(op.colour)}) {
        d.add(v);
      }
      d.add(op.text);
    }
    for (const std::string& name : page.visibleControls) d.add(name);
  }
  for (const std::size_t v : {platform.pages.size(), platform.documentEnds.size()}) d.add(std::to_string(v));
  for (const int v : {platform.randomCount, platform.yieldCount, platform.maximiseCount, platform.refreshCount,
                      platform.seedCount, static_cast<int>(platform.lastSeed)}) {
    d.add(std::to_string(v));
  }
  digestWindow(d, w);
  for (const DrawOp& op : w.surface().ops()) d.add(op.text);
}

struct Group {
  const char* name;
  std::uint64_t firstSeed, seeds;
  bool practice, fractionalBlanks;
  std::uint64_t recorded;
};

TEST(RecordedBehaviour, EverySeedGivesTheRecordedSessions) {
  const Group groups[] = {
      {"runs", 1, 400, false, false, 0x078659e3d4479851ULL},
      {"more runs", 401, 400, false, false, 0xafd3e48305af07c0ULL},
      {"practice", 1, 150, true, false, 0x4b0666a93ceda3adULL},
      {"fractional blank targets", 1, 150, false, true, 0xfa6489cd20b44091ULL},
  };
  const bool print = std::getenv("QUILLION_PRINT_DIGESTS") != nullptr;
  for (const Group& g : groups) {
    Digest d;
    for (std::uint64_t seed = g.firstSeed; seed < g.firstSeed + g.seeds; ++seed) {
      playSession(d, seed, g.practice, g.fractionalBlanks);
    }
    if (print) std::printf("%s: 0x%016llxULL\n", g.name, static_cast<unsigned long long>(d.value()));
    EXPECT_EQ(d.value(), g.recorded) << g.name;
  }
}

}  // namespace
}  // namespace quill::testing
