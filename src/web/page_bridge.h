// The calls between the web binding and the page's JavaScript: the page is
// told what changed, and hands over the user's actions only when asked.
#pragma once

namespace quill::web {

// The kinds of event the page queues, with what they carry.
enum class PageEvent {
  None = 0,
  Activate = 1,    // the window became active
  Click = 2,       // a control clicked: index
  Edit = 3,        // a text box's whole new text: index, text
  KeyDown = 4,     // on a control (index) or on the window (index -1): key, shift
  KeyUp = 5,       // on a control: index, key, shift
  MenuClick = 6,   // a menu item chosen: index
  MouseDown = 7,   // on the surface: button, shift, x, y
  Close = 8,       // the page is going away
};

extern "C" {
// The window's build: controls, menus, client area and caption as JSON.
void page_build(const char* json);
void page_control(int index, const char* json);
void page_menu(int index, int visible, int enabled, int checked);
void page_caption(const char* caption);
// Focus to a control, or to the surface (-1).
void page_focus(int index);
// Drawing operations since the last: six numbers each (kind, x1, y1, x2, y2,
// colour) and their texts, each ended by a unit separator; `clear` first.
void page_draw(int clear, const float* numbers, int count, const char* texts);
// A grid drawn (its place in the drawing's grids, where it lies, its cells'
// size and count) with what each cell shows, row by row, each name ended by
// a unit separator.
void page_grid(int index, float left, float top, float cellWidth, float cellHeight, int columns, int rows,
               const char* names);
// A hint's marks: the boxes of the marked cells (four numbers each, none when
// the hint is gone), and the hinted cell (grid, row, column) with its words.
void page_hint(const float* boxes, int count, int grid, int row, int column, const char* words);
// The cell cursor: its grid, row and column, and its box; no cursor when the
// grid is -1.
void page_cursor(int grid, int row, int column, float left, float top, float width, float height);
// A printed page: its drawing as above, its visible controls as JSON and
// the width and height of the area printed.
void page_print(const float* numbers, int count, const char* texts, const char* controls, float width,
                float height);
void page_end_document();
// The run is over: the documents ended since the last time go to the print view.
void page_show_documents();
void page_ended();
// Takes the next queued event: its kind (0 when none), with four numbers
// and, fifth, the length in bytes of its text, which page_event_text copies.
int page_next_event(double* values);
void page_event_text(char* text, int capacity);
// Gives the browser its turn; with `waitForEvent`, until an event arrives.
void page_sleep(int waitForEvent);
// Gives the browser its turn for this long.
void page_pause(int milliseconds);
double page_milliseconds();
}

}  // namespace quill::web
