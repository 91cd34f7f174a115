// Parsing the command line, and the batch run: the window's own controls
// set through its model as a person sets them, "Create" pressed, the pages
// delivered, the program ended.
#include "batch/batch.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cctype>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "construction/page_geometry.h"
#include "platform/number_text.h"
#include "qt/form_view.h"
#include "qt/page_delivery.h"
#include "qt/qt_platform.h"
#include "screens/size_entry.h"
#include "window/main_window.h"

namespace quill::batch {

namespace {

bool isSeedOption(const char* argument) { return std::strncmp(argument, "--seed", 6) == 0; }

// An option's last value as the bytes the shell gave (the locale's
// encoding): decoded, a name that is not in it would not be the name
// written. The decoded value when the bytes cannot be told.
QByteArray rawValue(int argc, char** argv, const char* option, const QString& decoded) {
  const std::size_t length = std::strlen(option);
  QByteArray value;
  for (int i = 1; i < argc && std::strcmp(argv[i], "--") != 0; ++i) {
    if (std::strcmp(argv[i], option) == 0 && i + 1 < argc) {
      value = argv[++i];
    } else if (std::strncmp(argv[i], option, length) == 0 && argv[i][length] == '=') {
      value = argv[i] + length + 1;
    }
  }
  return QString::fromLocal8Bit(value) == decoded ? value : QFile::encodeName(decoded);
}

// A whole number as the option's text, or none.
std::optional<long long> wholeNumber(const QString& text) {
  bool ok = false;
  const long long value = text.toLongLong(&ok);
  return ok ? std::optional<long long>(value) : std::nullopt;
}

// Types the text into a box as a person would: the box emptied, then one
// character at a time, each key released.
void typeInto(Control& box, const QString& text) {
  const std::string typed = text.toStdString();
  box.userEdit("");
  box.userKeyUp(0);
  for (std::size_t length = 1; length <= typed.size(); ++length) {
    box.userEdit(typed.substr(0, length));
    const char key = typed[length - 1];
    box.userKeyUp(std::isalnum(static_cast<unsigned char>(key)) ? std::toupper(static_cast<unsigned char>(key)) : 0);
  }
}

void setBox(Control& box, bool checked) {
  if (box.checked() != checked) box.userClick();
}

// How many pages a batch of `squares` prints: pages of squares, or each
// square's tiles when it is larger than the page; each with its answers
// when those are asked for.
long long pagesAsked(const MainWindow& w, long long squares, long long capacity) {
  const int n = w.state().squareSize;
  const long long perPage = w.state().printChoice == PrintChoice::PuzzlesAndAnswers ? 2 : 1;
  if (page::largerThanPage(n, w.cellWidth())) {
    return squares * perPage * static_cast<long long>(page::tiles(n, page::tileSize(n, w.cellWidth())).size());
  }
  return (squares + capacity - 1) / capacity * perPage;
}

// One line on a terminal, redrawn in place: pages made of pages asked, and
// the rate; shown only once the batch has taken a second.
class Progress {
 public:
  Progress(long long asked, bool shown) : asked_(asked), shown_(shown), started_(Clock::now()) {}
  ~Progress() {
    if (drawn_) std::fputc('\n', stderr);
  }
  void pagePrinted() {
    ++made_;
    const double seconds = std::chrono::duration<double>(Clock::now() - started_).count();
    if (!shown_ || seconds < 1 || (made_ < asked_ && Clock::now() - lastDrawn_ < std::chrono::milliseconds(100))) return;
    lastDrawn_ = Clock::now();
    const long long total = std::max(made_, asked_);
    const int filled = static_cast<int>(30 * made_ / total);
    std::fprintf(stderr, "\r[%s%s] %lld of %lld pages, %.0f pages/s ", std::string(filled, '#').c_str(),
                 std::string(30 - filled, '.').c_str(), made_, total, static_cast<double>(made_) / seconds);
    std::fflush(stderr);
    drawn_ = true;
  }

 private:
  using Clock = std::chrono::steady_clock;
  long long asked_, made_ = 0;
  bool shown_, drawn_ = false;
  Clock::time_point started_, lastDrawn_;
};

}  // namespace

bool asksForBatch(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    if (isSeedOption(argv[i])) {
      if (std::strcmp(argv[i], "--seed") == 0) ++i;  // its value follows
      continue;
    }
    return true;
  }
  return false;
}

Request parseArguments(int argc, char** argv, bool batch) {
  QStringList arguments;
  for (int i = 0; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  QCommandLineParser parser;
  parser.setApplicationDescription(
      "Builds complete magic squares, puzzles and answer pages, and prints them without a window.\n"
      "Without options the window opens; with --seed alone it opens with its draws seeded.");
  const auto option = [&](const char* name, const char* help, const char* value = nullptr,
                          const char* byDefault = nullptr) {
    QCommandLineOption o(name, QString(help) + (byDefault ? QString(" (default: %1)").arg(byDefault) : QString()));
    if (value != nullptr) o.setValueName(value);
    parser.addOption(o);
  };
  option("size", "Size of Square (Prime Number): a prime from 5 to 101.", "N", "5");
  option("count", "Print how many squares? At least 1.", "N", "as many as fill a page");
  option("start", "Starting Number.", "N", "1");
  option("distance", "Distance Between Numbers.", "N", "1");
  option("random-start", "Choose a random starting number, allowing this many different ones.", "LIMIT", "off");
  option("print", "What is printed: squares, puzzles, or both puzzles and answers.", "squares|puzzles|both", "both");
  option("shaded", "Answer pages with the former blanks shaded (default).");
  option("plain", "Answer pages without shading.");
  option("difficulty", "Puzzle difficulty.", "easy|challenging", "challenging");
  option("blanks", "Leave how many blanks? At least 1.", "N", "100");
  option("main-lines", "Include main diagonals and lines (off needs --all-diagonals on).", "on|off", "on");
  option("all-diagonals", "Include all diagonals.", "on|off", "off");
  option("cross-diagonals", "5 by 5: cross-diagonals, only the main ones or all.", "off|main|all", "off");
  option("cross-lines", "5 by 5: cross-lines.", "off|main|all", "off");
  option("scattered-cross-diagonals", "5 by 5: scattered cross-diagonals.", "off|main|all", "off");
  option("scattered-cross-lines", "5 by 5: scattered cross-lines.", "off|main|all", "off");
  option("output", "Write the pages as one PDF file (- for standard output) instead of printing them.", "FILE");
  option("printer", "Print on this CUPS queue.", "NAME", "the default printer");
  option("paper", "Paper size.", "a4|letter", "the printer's, and the locale's for files");
  option("seed", "Seed the random draws: the same seed makes the same pages.", "N", "the time of day");
  option("quiet", "Say nothing but errors.");
  parser.addHelpOption();
  parser.addVersionOption();

  Request request;
  request.kind = batch ? Request::Kind::Batch : Request::Kind::Window;
  const auto invalid = [&](const QString& why) {
    request.kind = Request::Kind::Invalid;
    request.text = why;
    return request;
  };
  if (!parser.parse(arguments)) return invalid(parser.errorText());
  if (parser.isSet("help")) {
    request.kind = Request::Kind::Help;
    request.text = parser.helpText();
    return request;
  }
  if (parser.isSet("version")) {
    request.kind = Request::Kind::Version;
    request.text = QCoreApplication::applicationName() + " " + QCoreApplication::applicationVersion() + "\n";
    return request;
  }
  if (!parser.positionalArguments().isEmpty()) {
    return invalid(QString("unexpected argument '%1'").arg(parser.positionalArguments().first()));
  }
  if (parser.isSet("seed")) {
    bool ok = false;
    request.seed = parser.value("seed").toULongLong(&ok);
    if (!ok) return invalid(QString("--seed needs a whole number from 0, not '%1'").arg(parser.value("seed")));
  }

  Inputs& in = request.inputs;
  // Whole numbers with a least value; plain numbers (the window's boxes take decimals and signs).
  const struct {
    const char* name;
    std::optional<QString>* into;
    long long least;
  } wholes[] = {{"size", &in.size, 5}, {"count", &in.count, 1}, {"blanks", &in.blanks, 1},
                {"random-start", &in.randomStartLimit, 1}};
  for (const auto& [name, into, least] : wholes) {
    if (!parser.isSet(name)) continue;
    const QString text = parser.value(name);
    const std::optional<long long> value = wholeNumber(text);
    if (!value) return invalid(QString("--%1 needs a whole number, not '%2'").arg(name, text));
    if (*value < least) return invalid(QString("--%1 must be at least %2, not %3").arg(name).arg(least).arg(*value));
    *into = QString::number(*value);
  }
  if (in.size) {
    const long long n = in.size->toLongLong();
    if (n > 101 || !isPrimeSizeEntry(static_cast<double>(n))) {
      return invalid(QString("--size must be a prime from 5 to 101, not %1").arg(n));
    }
  }
  for (const auto& [name, into] : {std::pair{"start", &in.start}, {"distance", &in.distance}}) {
    if (!parser.isSet(name)) continue;
    bool ok = false;
    const double value = parser.value(name).toDouble(&ok);
    if (!ok || !std::isfinite(value)) return invalid(QString("--%1 needs a number, not '%2'").arg(name, parser.value(name)));
    *into = parser.value(name);
  }

  const auto choose = [&](const char* name, const QStringList& values, std::optional<QString>& into) {
    if (!parser.isSet(name)) return true;
    if (!values.contains(parser.value(name))) return false;
    into = parser.value(name);
    return true;
  };
  std::optional<QString> mainLines, allDiagonals;
  const struct {
    const char* name;
    QStringList values;
    std::optional<QString>* into;
  } choices[] = {{"print", {"squares", "puzzles", "both"}, &in.print},
                 {"difficulty", {"easy", "challenging"}, &in.difficulty},
                 {"main-lines", {"on", "off"}, &mainLines},
                 {"all-diagonals", {"on", "off"}, &allDiagonals},
                 {"cross-diagonals", {"off", "main", "all"}, &in.families[0]},
                 {"cross-lines", {"off", "main", "all"}, &in.families[1]},
                 {"scattered-cross-diagonals", {"off", "main", "all"}, &in.families[2]},
                 {"scattered-cross-lines", {"off", "main", "all"}, &in.families[3]}};
  for (const auto& [name, values, into] : choices) {
    if (!choose(name, values, *into)) {
      return invalid(QString("--%1 must be %2, not '%3'").arg(name, values.join(" or "), parser.value(name)));
    }
  }
  if (mainLines) in.mainLines = *mainLines == "on";
  if (allDiagonals) in.allDiagonals = *allDiagonals == "on";
  // The window puts the main lines back when no lines would be left.
  if (in.mainLines == false && in.allDiagonals != true) {
    return invalid("--main-lines off needs --all-diagonals on: puzzles need lines to blank through");
  }
  if (parser.isSet("shaded") && parser.isSet("plain")) return invalid("--shaded and --plain cannot both be given");
  if (parser.isSet("shaded") || parser.isSet("plain")) in.shaded = parser.isSet("shaded");

  request.paper = parser.value("paper");
  if (parser.isSet("paper") && request.paper != "a4" && request.paper != "letter") {
    return invalid(QString("--paper must be a4 or letter, not '%1'").arg(request.paper));
  }
  if (parser.isSet("output")) {
    request.output = rawValue(argc, argv, "--output", parser.value("output"));
    if (request.output != "-") {
      struct stat named {};
      if (request.output.isEmpty() || (::stat(request.output.constData(), &named) == 0 && S_ISDIR(named.st_mode))) {
        return invalid("--output needs a file name");
      }
      const QByteArray folder = qt::folderOf(request.output);
      if (::stat(folder.constData(), &named) != 0 || !S_ISDIR(named.st_mode)) {
        return invalid(QString("--output: no folder %1").arg(QFileInfo(QFile::decodeName(folder)).absoluteFilePath()));
      }
    }
  }
  request.printer = parser.value("printer");
  request.quiet = parser.isSet("quiet");
  return request;
}

// The window's inputs, given to it in the order a person would: the size
// first (it sets the print count that fills a page), then the numbers, the
// menus and the properties page.
void applyInputs(MainWindow& w, const Inputs& in) {
  if (in.size) typeInto(w.Text2, *in.size);
  if (in.start) typeInto(w.text4, *in.start);
  if (in.distance) typeInto(w.Text5, *in.distance);
  if (in.blanks) typeInto(w.Text3, *in.blanks);
  if (in.randomStartLimit) {
    setBox(w.Check1, true);
    typeInto(w.Text7, *in.randomStartLimit);
  }
  if (in.print) (*in.print == "squares" ? w.panswers : *in.print == "puzzles" ? w.ppuzzles : w.pboth).userClick();
  if (in.shaded) (*in.shaded ? w.highlighted : w.nhighlighted).userClick();
  if (in.difficulty) (*in.difficulty == "easy" ? w.easy : w.challenging).userClick();
  const bool anyProperty = in.mainLines || in.allDiagonals ||
                           std::any_of(in.families.begin(), in.families.end(), [](const auto& f) { return f.has_value(); });
  if (!anyProperty) return;
  w.chooseproperties.userClick();
  if (in.mainLines) setBox(w.Check2, *in.mainLines);
  if (in.allDiagonals) setBox(w.Check3, *in.allDiagonals);
  Control* const pairs[4][2] = {{&w.Check4, &w.Check5}, {&w.Check6, &w.Check7}, {&w.Check8, &w.Check9},
                                {&w.Check10, &w.Check11}};
  for (std::size_t i = 0; i < 4; ++i) {
    if (!in.families[i]) continue;
    setBox(*pairs[i][0], *in.families[i] == "main");
    setBox(*pairs[i][1], *in.families[i] == "all");
  }
  w.Command6.userClick();
}

namespace {
// Ctrl+C, or a polite kill: the batch ends at once, and no file is left
// half-written, under its final name or its hidden one.
extern "C" void interrupted(int) {
  qt::removeFileBeingWritten();
  ::_exit(130);
}
}  // namespace

int runBatch(const Request& request) {
  std::signal(SIGINT, interrupted);
  std::signal(SIGTERM, interrupted);
  // A reader that goes away is a failed write, said in one line, not a signal.
  std::signal(SIGPIPE, SIG_IGN);
  qt::Destinations where = qt::defaultDestinations();
  where.outputFile = request.output;
  where.printerName = request.printer;
  if (request.paper == "a4") where.paper = QPageSize(QPageSize::A4);
  if (request.paper == "letter") where.paper = QPageSize(QPageSize::Letter);
  qt::QtPlatform platform(where, request.seed);
  platform.oneDocument = true;
  platform.showsWindow = false;
  auto window = std::make_unique<MainWindow>(platform);
  MainWindow& w = *window;
  qt::FormView view(w);  // never shown: it lays out the controls that are printed
  platform.attach(&view);
  w.userActivate();
  applyInputs(w, request.inputs);

  // The window prints at most a page of squares a run ("Fill Page"): a
  // longer batch is "Create" pressed again, the last page's count typed in,
  // the draws going on from where the run before left them.
  // "Fill Page" ticked anew puts a page's worth into the print count.
  if (w.Check12.checked()) w.Check12.userClick();
  w.Check12.userClick();
  const auto capacity = static_cast<long long>(numericValue(w.Text1.text()));
  long long left = request.inputs.count ? request.inputs.count->toLongLong() : capacity;
  Progress progress(pagesAsked(w, left, capacity), !request.quiet && ::isatty(STDERR_FILENO) != 0);
  platform.onPagePrinted = [&progress, &platform] {
    progress.pagePrinted();
    // The output can take no more: the batch ends at once (the line saying
    // why is out, and nothing is left behind).
    if (platform.outputFailed()) {
      std::fflush(nullptr);
      std::_Exit(1);
    }
  };
  while (left > 0) {
    const long long squares = std::min(left, capacity);
    if (numericValue(w.Text1.text()) != static_cast<double>(squares)) typeInto(w.Text1, QString::number(squares));
    w.Command1.userClick();
    left -= squares;
  }
  return platform.finishPrinting(std::chrono::minutes(30)) == 0 ? 0 : 1;
}

}  // namespace quill::batch
