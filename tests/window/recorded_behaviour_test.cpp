// The same seed gives the same squares, puzzles, draws, yields, pages and
// captions: seeded sessions, driven only through the user's actions (sizes,
// inputs, menus, property boxes, runs with and without aborts, practice with
// clicks and answers), each digested part by part (every printed page's
// drawing and visible controls, every title seen at a yield, every state of
// the window, the counts of draws, yields, maximises and refreshes) and held
// to recorded_sessions.txt, written when the behaviour was last meant to
// change; a difference is named by the first session and the parts of it
// that differ. After an intended change: QUILLION_RECORD_SESSIONS=1 writes
// the sessions file anew.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/window_fixture.h"

namespace quill::testing {
namespace {

// One part of a session's record: what it is, the hash of its items, and
// the first of them as text, to show.
struct Part {
  std::string label;
  std::uint64_t hash = 1469598103934665603ULL;
  std::string shown;

  // As the sessions file holds it: the label, and the hash cut to 24 bits
  // (a count's label holds its value, which is all there is to it).
  std::string entry() const {
    if (label.find('=') != std::string::npos) return label;
    char hex[16];
    std::snprintf(hex, sizeof hex, "%06llx", static_cast<unsigned long long>(hash & 0xffffffULL));
    return label + ":" + hex;
  }
};

// A session's record, part by part.
class Digest {
 public:
  void add(const std::string& text) {
    Part& part = parts_[current_];
    for (const unsigned char c : text) step(part.hash, c);
    step(part.hash, 0xff);
    if (part.shown.size() < 160) part.shown += (part.shown.empty() ? "" : " | ") + text;
  }
  void add(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    add(std::string(text));
  }
  // The items from here on go to the part of that label, made the first
  // time (the titles, say, are one part).
  void part(const std::string& label) {
    const auto found = std::find_if(parts_.begin(), parts_.end(), [&](const Part& p) { return p.label == label; });
    current_ = static_cast<std::size_t>(found - parts_.begin());
    if (found == parts_.end()) parts_.push_back({label, Part{}.hash, {}});
  }
  std::vector<Part> takeParts() { return std::exchange(parts_, {}); }

 private:
  static void step(std::uint64_t& hash, unsigned char c) { hash = (hash ^ c) * 1099511628211ULL; }
  std::vector<Part> parts_;
  std::size_t current_ = 0;
};

struct Picks {
  RandomSource random;
  int pick(int count) { return static_cast<int>(random.next() * count); }
};

// Every state of the window the session recorded is one part, "windows".
void digestWindow(Digest& d, const MainWindow& w) {
  d.part("windows");
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
    d.part("titles");
    d.add(lastCaption = w.caption());
    digestWindow(d, w);
    if (!practice) return;
    d.part("practice");
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
        // Drawn one at a time, down first as the sessions were recorded: every
        // compiler then draws them in the same order.
        const int down = p.pick(90);
        const int across = p.pick(w.cellWidth() * 5);
        w.userMouseDown(1, 0, static_cast<float>(8 + across), static_cast<float>(8 + down));
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
  for (std::size_t k = 0; k < platform.pages.size(); ++k) {
    const PrintedPage& page = platform.pages[k];
    d.part("page" + std::to_string(k + 1) + "x" + std::to_string(page.drawing.size()));
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
  const std::pair<const char*, long long> counts[] = {
      {"pages", static_cast<long long>(platform.pages.size())},
      {"ends", static_cast<long long>(platform.documentEnds.size())},
      {"draws", platform.randomCount},
      {"yields", platform.yieldCount},
      {"maximises", platform.maximiseCount},
      {"refreshes", platform.refreshCount},
      {"seedings", platform.seedCount},
      {"seed", static_cast<int>(platform.lastSeed)}};
  for (const auto& [name, v] : counts) {
    d.part(std::string(name) + "=" + std::to_string(v));
    d.add(std::to_string(v));
  }
  digestWindow(d, w);
  d.part("drawing");
  for (const DrawOp& op : w.surface().ops()) d.add(op.text);
}

// The sessions file: a line a session, "group seed entry entry ...", an
// entry "label:hash" or, for a count, "name=value". Labels: windows (every
// state of the window recorded), titles, practice (the practice drawings),
// pageKxN (the K-th page printed, of N operations), drawing (at the end).
using Sessions = std::map<std::pair<std::string, std::uint64_t>, std::vector<std::string>>;

Sessions readSessions() {
  Sessions sessions;
  std::ifstream file(QUILLION_RECORDED_SESSIONS);
  std::string line;
  while (std::getline(file, line)) {
    std::istringstream words(line);
    std::string group;
    std::uint64_t seed = 0;
    words >> group >> seed;
    std::vector<std::string>& entries = sessions[{group, seed}];
    for (std::string entry; words >> entry;) entries.push_back(entry);
  }
  return sessions;
}

// Where a group's sessions first differ from the recorded ones: the seed,
// and each part of that session that differs (a title, a count, a page),
// with the first of what it holds now.
std::string firstDifference(const std::string& group, const std::map<std::uint64_t, std::vector<Part>>& now,
                            const Sessions& recorded) {
  for (const auto& [seed, parts] : now) {
    const auto found = recorded.find({group, seed});
    if (found == recorded.end()) return "seed " + std::to_string(seed) + " is not in " + QUILLION_RECORDED_SESSIONS;
    const std::vector<std::string>& was = found->second;
    std::string differences;
    for (std::size_t i = 0; i < std::max(parts.size(), was.size()); ++i) {
      const std::string entry = i < parts.size() ? parts[i].entry() : "(nothing)";
      const std::string before = i < was.size() ? was[i] : "(nothing)";
      if (entry == before) continue;
      differences += "\n  recorded " + before + ", now " + entry;
      if (i < parts.size()) differences += ": " + parts[i].shown.substr(0, 120);
    }
    if (!differences.empty()) return "the first session to differ is seed " + std::to_string(seed) + differences;
  }
  return {};
}

struct Group {
  const char* key;  // its name in the sessions file
  std::uint64_t firstSeed, seeds;
  bool practice, fractionalBlanks;
};

TEST(RecordedBehaviour, EverySeedGivesTheRecordedSessions) {
  const Group groups[] = {{"runs", 1, 400, false, false},
                          {"more-runs", 401, 400, false, false},
                          {"practice", 1, 150, true, false},
                          {"fractional", 1, 150, false, true}};
  const bool rewrite = std::getenv("QUILLION_RECORD_SESSIONS") != nullptr;
  std::ofstream rewritten;
  if (rewrite) rewritten.open(QUILLION_RECORDED_SESSIONS);
  const Sessions recorded = rewrite ? Sessions{} : readSessions();
  for (const Group& g : groups) {
    Digest d;
    std::map<std::uint64_t, std::vector<Part>> sessions;
    for (std::uint64_t seed = g.firstSeed; seed < g.firstSeed + g.seeds; ++seed) {
      playSession(d, seed, g.practice, g.fractionalBlanks);
      sessions[seed] = d.takeParts();
    }
    if (!rewrite) {
      EXPECT_EQ(firstDifference(g.key, sessions, recorded), "") << g.key;
      continue;
    }
    for (const auto& [seed, parts] : sessions) {
      rewritten << g.key << ' ' << seed;
      for (const Part& part : parts) rewritten << ' ' << part.entry();
      rewritten << '\n';
    }
  }
}

}  // namespace
}  // namespace quill::testing
