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
#include <sstream>
#include <string>
#include <vector>

#include "support/window_fixture.h"

namespace quill::testing {
namespace {

// A session's record: its parts in the order first met, each a label and the
// hash of its items, as the sessions file holds them ("label:hash", the hash
// cut to 24 bits; a count's label, "name=value", is all there is to it).
class Digest {
 public:
  void add(const std::string& text) {
    for (const unsigned char c : text) step(hashes_[current_], c);
    step(hashes_[current_], 0xff);
  }
  void add(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    add(std::string(text));
  }
  // The items from here on go to the part of that label.
  void part(const std::string& label) {
    current_ = static_cast<std::size_t>(std::find(labels_.begin(), labels_.end(), label) - labels_.begin());
    if (current_ == labels_.size()) labels_.push_back(label), hashes_.push_back(1469598103934665603ULL);
  }
  std::vector<std::string> takeEntries() {
    std::vector<std::string> entries;
    for (std::size_t i = 0; i < labels_.size(); ++i) {
      char hex[16];
      std::snprintf(hex, sizeof hex, ":%06llx", static_cast<unsigned long long>(hashes_[i] & 0xffffffULL));
      entries.push_back(labels_[i] + (labels_[i].find('=') == std::string::npos ? hex : ""));
    }
    labels_.clear(), hashes_.clear();
    return entries;
  }

 private:
  static void step(std::uint64_t& hash, unsigned char c) { hash = (hash ^ c) * 1099511628211ULL; }
  std::vector<std::string> labels_;
  std::vector<std::uint64_t> hashes_;
  std::size_t current_ = 0;
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
  RandomSource picks(seed * 7919);
  const auto pick = [&](int count) { return static_cast<int>(picks.next() * count); };
  StartedWindow started(seed);
  FakePlatform& platform = started.platform;
  MainWindow& w = started.w;
  if (pick(3) == 0) {  // any size first, and an arrow key from it
    const char* const odd[] = {"7.4", "999983", "x", "1E+99"};
    retype(w.Text2, pick(8) ? std::to_string(pick(300) - 20) : odd[pick(4)]);
    w.Text2.userKeyUp(pick(2) ? keys::up : keys::down);
  }
  const int sizes[] = {5, 5, 5, 7, 11, 13, 17, 19, 23, 29, 31, 53, 101};
  const int n = sizes[pick(practice ? 5 : 13)];
  if (n <= 29 && pick(2) == 0) {
    w.findMenuItem("sqr" + std::to_string(n))->userClick();
  } else {
    retype(w.Text2, std::to_string(n));
  }
  if (pick(4) == 0) w.Text2.userKeyUp(keys::up), w.Text2.userKeyUp(keys::down);
  const char* const starts[] = {"1", "1", "-50", "1000", ".5", "-3", "99999", "0"};
  const char* const distances[] = {"1", "1", "2", "-1", ".25", "0", "3"};
  if (pick(2)) retype(w.text4, starts[pick(8)]);
  if (pick(2)) retype(w.Text5, distances[pick(7)]);
  const char* const blanks[] = {"1", "5", "20", "100", "0", "3"};
  const char* const fractions[] = {"2.5", "1.5", "7.25"};
  retype(w.Text3, fractionalBlanks ? fractions[pick(3)] : blanks[pick(6)]);
  if (!practice) {
    const int count = pick(6);
    if (count < 3) retype(w.Text1, count == 0 ? "1" : count == 1 ? "3" : "0");
    if (count == 3) w.Check12.userClick();
  }
  if (pick(3) == 0) w.Check1.userClick();
  if (pick(3) == 0) retype(w.Text7, pick(2) ? "1" : "500");
  MenuItem* const print[] = {&w.panswers, &w.ppuzzles, &w.pboth};
  print[pick(3)]->userClick();
  if (pick(3) == 0) w.nhighlighted.userClick();
  if (pick(2) == 0) w.easy.userClick();
  if (pick(2) == 0) {
    w.chooseproperties.userClick();
    digestWindow(d, w);
    Control* const boxes[] = {&w.Check2, &w.Check3, &w.Check4, &w.Check5, &w.Check6,
                              &w.Check7, &w.Check8, &w.Check9, &w.Check10, &w.Check11};
    for (int k = pick(6); k > 0; --k) boxes[pick(10)]->userClick();
    w.Command6.userClick();
  }
  if (pick(5) == 0) {
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
    const int abortAt = pick(3) == 0 ? 1 + pick(400) : 5000;
    platform.onYield = [&](int k) {
      noteCaption();
      if (pick(40) == 0) w.userKeyDown(65 + pick(16));  // keys other than Q do nothing
      if (k != abortAt && k <= 4000) return;
      if (pick(2)) {
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
      if (pick(8) == 0) {
        // Drawn one at a time, down first as the sessions were recorded: every
        // compiler then draws them in the same order.
        const int down = pick(90);
        const int across = pick(w.cellWidth() * 5);
        w.userMouseDown(1, 0, static_cast<float>(8 + across), static_cast<float>(8 + down));
      }
      for (int y = 1; y <= w.state().squareSize; ++y) {
        for (int x = 1; x <= w.state().squareSize; ++x) {
          if (!isBlank(w.square().squareNumbers[x][y])) continue;
          clickCell(w, x, y);
          const int mode = pick(10);
          char answer[32];
          std::snprintf(answer, sizeof answer, "%.17g", w.square().squareRanks[x][y]);
          w.Text6.userEdit(mode == 0 ? "x" : mode == 1 ? "12345" : answer);
          w.Text6.userKeyDown(keys::enter);
          if (pick(40) == 0) w.newsquare.userClick();
          if (pick(80) == 0) w.startover.userClick();
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
  for (const auto& [name, v] : counts) d.part(std::string(name) + "=" + std::to_string(v));
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

// The first session that differs from the recorded one, and each part of it
// that differs (a title, a count, a page).
std::string firstDifference(const Sessions& now, const Sessions& recorded) {
  for (const auto& [key, entries] : now) {
    const auto found = recorded.find(key);
    const std::vector<std::string> was = found == recorded.end() ? std::vector<std::string>{} : found->second;
    std::string differences;
    for (std::size_t i = 0; i < std::max(entries.size(), was.size()); ++i) {
      const std::string entry = i < entries.size() ? entries[i] : "(nothing)";
      const std::string before = i < was.size() ? was[i] : "(nothing)";
      if (entry != before) differences += "\n  recorded " + before + ", now " + entry;
    }
    if (!differences.empty()) return key.first + " seed " + std::to_string(key.second) + " differs:" + differences;
  }
  return {};
}

TEST(RecordedBehaviour, EverySeedGivesTheRecordedSessions) {
  const struct {
    const char* group;
    std::uint64_t firstSeed, seeds;
    bool practice, fractionalBlanks;
  } groups[] = {{"runs", 1, 400, false, false},
                {"more-runs", 401, 400, false, false},
                {"practice", 1, 150, true, false},
                {"fractional", 1, 150, false, true}};
  Sessions now;
  for (const auto& g : groups) {
    Digest d;
    for (std::uint64_t seed = g.firstSeed; seed < g.firstSeed + g.seeds; ++seed) {
      playSession(d, seed, g.practice, g.fractionalBlanks);
      now[{g.group, seed}] = d.takeEntries();
    }
  }
  if (std::getenv("QUILLION_RECORD_SESSIONS") == nullptr) {
    EXPECT_EQ(firstDifference(now, readSessions()), "");
    return;
  }
  std::ofstream rewritten(QUILLION_RECORDED_SESSIONS);
  for (const auto& [key, entries] : now) {
    rewritten << key.first << ' ' << key.second;
    for (const std::string& entry : entries) rewritten << ' ' << entry;
    rewritten << '\n';
  }
}

}  // namespace
}  // namespace quill::testing
