// The JavaScript side of the bridge's calls: each hands its arguments to the
// page object that quillion.js installs as Module.page.
#include "web/page_bridge.h"

#include <emscripten.h>

namespace quill::web {

extern "C" {
EM_JS(void, page_build, (const char* json), { Module.page.build(JSON.parse(UTF8ToString(json))); });
EM_JS(void, page_control, (int index, const char* json), {
  Module.page.control(index, JSON.parse(UTF8ToString(json)));
});
EM_JS(void, page_menu, (int index, int visible, int enabled, int checked), {
  Module.page.menu(index, visible != 0, enabled != 0, checked != 0);
});
EM_JS(void, page_caption, (const char* caption), { Module.page.caption(UTF8ToString(caption)); });
EM_JS(void, page_focus, (int index), { Module.page.focus(index); });
EM_JS(void, page_draw, (int clear, const float* numbers, int count, const char* texts), {
  Module.page.draw(clear != 0, HEAPF32.slice(numbers >> 2, (numbers >> 2) + count * 6),
                   UTF8ToString(texts).split(String.fromCharCode(31)));
});
EM_JS(void, page_grid, (int index, float left, float top, float cellWidth, float cellHeight, int columns, int rows,
                        const char* names), {
  Module.page.grid(index, left, top, cellWidth, cellHeight, columns, rows,
                   UTF8ToString(names).split(String.fromCharCode(31)));
});
EM_JS(void, page_hint, (const float* boxes, int count, int grid, int row, int column, const char* words), {
  Module.page.hint(HEAPF32.slice(boxes >> 2, (boxes >> 2) + count * 4), grid, row, column, UTF8ToString(words));
});
EM_JS(void, page_cursor, (int grid, int row, int column, float left, float top, float width, float height), {
  Module.page.cursor(grid, row, column, left, top, width, height);
});
EM_JS(void, page_print, (const float* numbers, int count, const char* texts, const char* controls, float width,
                         float height), {
  Module.page.print(HEAPF32.slice(numbers >> 2, (numbers >> 2) + count * 6), UTF8ToString(texts),
                    JSON.parse(UTF8ToString(controls)), width, height);
});
EM_JS(void, page_end_document, (), { Module.page.endDocument(); });
EM_JS(void, page_show_documents, (), { Module.page.showDocuments(); });
EM_JS(void, page_ended, (), { Module.page.ended(); });
EM_JS(int, page_next_event, (double* values), {
  const event = Module.page.nextEvent();
  Module.pageEventText = event ? event.text || "" : "";
  if (!event) return 0;
  for (let i = 0; i < 4; ++i) HEAPF64[(values >> 3) + i] = event.values[i] || 0;
  HEAPF64[(values >> 3) + 4] = lengthBytesUTF8(Module.pageEventText);
  return event.kind;
});
EM_JS(void, page_event_text, (char* text, int capacity), { stringToUTF8(Module.pageEventText, text, capacity); });
EM_JS(void, page_sleep, (int waitForEvent), {
  Asyncify.handleSleep(function(wakeUp) { Module.page.sleep(waitForEvent != 0, wakeUp); });
});
EM_JS(void, page_pause, (int milliseconds), {
  Asyncify.handleSleep(function(wakeUp) { setTimeout(wakeUp, milliseconds); });
});
EM_JS(double, page_milliseconds, (), { return performance.now(); });
}

}  // namespace quill::web
