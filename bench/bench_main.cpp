// The hot paths: building one square, start-up, a whole run that fills and
// prints a page, rendering a printed page to PDF, and a grid read aloud.
#include <benchmark/benchmark.h>

#include <QAccessible>
#include <QApplication>
#include <QTemporaryDir>
#include <memory>

#include "construction/square_builder.h"
#include "window/main_window.h"
#include "qt/form_view.h"
#include "qt/surface_widget.h"
#include "qt/page_delivery.h"
#include "qt/page_spooler.h"
#include "bench_window.h"
#include "support/steps.h"

namespace quill {
namespace {

using Window = BenchWindow<MainWindow>;

void BM_BuildSquare(benchmark::State& state) {
  QuietPlatform platform;
  const BuildSteps steps = testing::buildSteps(platform);
  auto square = std::make_unique<Square>();
  for (auto _ : state) {
    buildSquare(*square, static_cast<int>(state.range(0)), 1, 1, steps);
    benchmark::DoNotOptimize(square->squareNumbers[1][1]);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(0));
}
BENCHMARK(BM_BuildSquare)->Arg(5)->Arg(29)->Arg(101)->Unit(benchmark::kMicrosecond);

// Start-up: the window and its activation, with and without its Qt widgets.
void BM_StartUp(benchmark::State& state) {
  for (auto _ : state) {
    Window session;
    if (state.range(0) == 1) {
      qt::FormView view(session.w);
      benchmark::DoNotOptimize(&view);
    }
  }
}
BENCHMARK(BM_StartUp)->ArgName("widgets")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

// "Create" with 25 squares of 5 by 5: build, draw and lay out all of them
// and print the full page (and, for puzzles and answers, its answer page).
void BM_RunOfTwentyFive(benchmark::State& state) {
  Window session;
  if (state.range(0) == 0) session.w.panswers.userClick();
  for (auto _ : state) session.w.Command1.userClick();
  state.counters["pages/run"] =
      benchmark::Counter(static_cast<double>(session.platform.pages) / static_cast<double>(state.iterations()));
}
BENCHMARK(BM_RunOfTwentyFive)->ArgName("answers")->Arg(0)->Arg(2)->Unit(benchmark::kMillisecond);

// One full page of 25 squares, as vector PDF through the Qt printer.
void BM_PrintPageToPdf(benchmark::State& state) {
  Window session;
  qt::FormView view(session.w);
  // A run leaves the surface empty, so the page is drawn here as a run draws it.
  auto square = std::make_unique<Square>();
  buildSquare(*square, 5, 1, 1, testing::buildSteps(session.platform));
  SquareDisplay display(session.platform, session.w.surface());
  const Progression numbers{5, 1, 1};
  display.prepareLayout(5, numbers);
  for (int row = 0; row < 5; ++row) {
    for (int column = 0; column < 5; ++column) {
      display.showsquare(*square, {8 + 144 * column, 8 + 108 * row, 1, 1}, numbers, {});
    }
  }
  QTemporaryDir folder;
  const std::vector<qt::PageSnapshot> pages{qt::takeSnapshot(view)};
  QString error;
  for (auto _ : state) qt::writePdfFile(folder.filePath("page.pdf"), pages, qt::localePaper(), error);
}
BENCHMARK(BM_PrintPageToPdf)->Unit(benchmark::kMillisecond);

// Pages per second through the spooler to a PDF file: a document of full
// pages handed over and delivered.
void BM_SpoolToPdf(benchmark::State& state) {
  Window session;
  qt::FormView view(session.w);
  session.w.Command1.userClick();  // leaves an empty page; the controls are what is printed
  QTemporaryDir folder;
  qt::PageSpooler spooler({.pagesFolder = folder.filePath("pages"), .spareFolder = folder.filePath("spare"), .usePrinter = false});
  const qt::PageSnapshot page = qt::takeSnapshot(view);
  const auto pages = static_cast<int>(state.range(0));
  for (auto _ : state) {
    for (int i = 0; i < pages; ++i) spooler.submit(page);
    spooler.finish(std::chrono::minutes(1));
  }
  state.counters["pages/s"] = benchmark::Counter(static_cast<double>(state.iterations() * pages), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_SpoolToPdf)->Arg(1)->Arg(48)->Unit(benchmark::kMillisecond)->UseRealTime();

// A screen reader reading a whole grid, cell by cell, through the surface's
// accessible table: the cost per cell should not grow with the grid.
void BM_ReadGridAloud(benchmark::State& state) {
  Window session;
  qt::FormView view(session.w);
  const int n = static_cast<int>(state.range(0));
  Surface& surface = session.w.surface();
  surface.addGrid({8, 8, 32, 18, n, n, 1, 1});
  for (int row = 0; row < n; ++row) {
    for (int column = 0; column < n; ++column) {
      const float x = 10 + 32.0F * static_cast<float>(column), y = 11 + 18.0F * static_cast<float>(row);
      surface.fillBox(x, y, x, y, palette::white);
      surface.printText(std::to_string(row * n + column));
      surface.nameCell(x, y, std::to_string(row * n + column));
    }
  }
  QAccessibleInterface* drawing = QAccessible::queryAccessibleInterface(view.surfaceWidget());
  QAccessibleTableInterface* table = drawing->child(drawing->childCount() - 1)->tableInterface();
  for (auto _ : state) {
    for (int row = 0; row < n; ++row) {
      for (int column = 0; column < n; ++column) benchmark::DoNotOptimize(table->cellAt(row, column)->text(QAccessible::Name));
    }
  }
  state.SetItemsProcessed(state.iterations() * n * n);
}
BENCHMARK(BM_ReadGridAloud)->Arg(29)->Arg(101)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quill

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
