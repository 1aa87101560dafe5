#include "environment/projects/project_screen.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "environment/editor/art.h"
#include "environment/editor/editor_ctrl.h"
#include "environment/editor/environment_globals.h"
#include "environment/editor/header_buttons.h"
#include "environment/rooms.h"
#include "environment/text_control/input_text.h"
#include "runtime/Extension/WindowHook.h"
#include "runtime/Font/TextLayout.h"
#include "runtime/Font/TextState.h"
#include "runtime/Function/DateFunctions.h"
#include "runtime/Graphics/Colour.h"
#include "runtime/Graphics/DrawState.h"
#include "runtime/Graphics/Primitives.h"
#include "runtime/Graphics/TextDrawing.h"
#include "runtime/IO/Input.h"
#include "runtime/Room/Room.h"

namespace {

constexpr int CARDS_PER_COLUMN = 5;
constexpr double COLUMN_STEP = 550, CARD_WIDTH = 500, CARD_HEIGHT = 85, ROW_STEP = 100;
constexpr double TITLE_WIDTH = 390, TITLE_SCALE = 0.4, SCROLL_MARGIN = 100, SCROLL_FLOOR_Y = 150;
constexpr uint32_t CARD_BORDER = 8421504, GROUND_HUE = 96;

constexpr std::array<const char*, 7> WEEKDAYS = {"Domenica", "Lunedì",  "Martedì", "Mercoledì",
                                                 "Giovedì",  "Venerdì", "Sabato"};
constexpr std::array<const char*, 12> MONTHS = {"Gennaio", "Febbraio", "Marzo",     "Aprile",  "Maggio",   "Giugno",
                                                "Luglio",  "Agosto",   "Settembre", "Ottobre", "Novembre", "Dicembre"};

std::string whole(double n) { return std::to_string(static_cast<long long>(n)); }

// "Giovedì 26 Novembre 2026": a date outside the calendar shows no names.
std::string day_text(double date) {
  const double weekday = date_get_weekday(date), month = date_get_month(date);
  const char* day_name = weekday >= 0 && weekday < 7 ? WEEKDAYS[static_cast<size_t>(weekday)] : "";
  const char* month_name = month >= 1 && month <= 12 ? MONTHS[static_cast<size_t>(month) - 1] : "";
  return std::string(day_name) + " " + whole(date_get_day(date)) + " " + month_name + " " + whole(date_get_year(date));
}

// "08:05": a number below 9 gets its leading zero; 9 itself keeps none.
std::string time_text(double date) {
  const auto two = [](double n) { return (n < 9 ? "0" : "") + whole(n); };
  return two(date_get_hour(date)) + ":" + two(date_get_minute(date));
}

bool continuation_byte(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// The title cut to the card's width at `scale` in the current font, with "..." where something was cut.
std::string fitted_title(std::string title, double scale) {
  bool cut = false;
  while (!title.empty() && string_width(title) * scale > TITLE_WIDTH) {
    // A whole character goes, not a byte of one.
    while (title.size() > 1 && continuation_byte(title.back())) title.pop_back();
    title.pop_back();
    cut = true;
  }
  return cut ? title + "..." : title;
}

// The column offset of the last card: the list's width past the first column.
double last_column(size_t cards) {
  return cards == 0 ? 0 : COLUMN_STEP * static_cast<double>((cards - 1) / CARDS_PER_COLUMN);
}

}  // namespace

void ProjectScreen::read_index() { progetto = read_project_index(); }

double ProjectScreen::card_left(int k) const { return 40 + COLUMN_STEP * (k / CARDS_PER_COLUMN) + cc; }
double ProjectScreen::card_top(int k) const { return 95 + ROW_STEP * (k % CARDS_PER_COLUMN + 1); }

int ProjectScreen::card_under_pointer() const {
  const double mx = mouse_x(), my = mouse_y();
  for (int k = 0; k < static_cast<int>(progetto.size()); ++k) {
    if (mx >= card_left(k) && mx <= card_left(k) + CARD_WIDTH && my >= card_top(k) && my <= card_top(k) + CARD_HEIGHT) {
      return k;
    }
  }
  return -1;
}

void ProjectScreen::draw_ground() const {
  draw_state().alpha = 1;
  draw_state().colour = static_cast<uint32_t>(make_colour_hsv(GROUND_HUE, 150, 150));
  draw_rectangle(0, 0, ENVIRONMENT_WIDTH, ENVIRONMENT_HEIGHT, false);
}

void ProjectScreen::draw_cards(double hue, bool hover, const std::string& match, double pulse) const {
  const int under = hover ? card_under_pointer() : -1;
  draw_set_halign(TEXT_ALIGN_START);
  draw_set_valign(TEXT_ALIGN_START);
  for (int k = 0; k < static_cast<int>(progetto.size()); ++k) {
    const double left = card_left(k), top = card_top(k);
    if (left > ENVIRONMENT_WIDTH || left + CARD_WIDTH < 0) continue;
    const SavedProject& card = progetto[static_cast<size_t>(k)];
    const bool matched = !match.empty() && card.titolo == match;
    double fill = make_colour_hsv(hue, k == under ? 150 : 100, 255);
    if (matched) fill = make_colour_hsv(40, 150, 255);
    draw_state().colour = static_cast<uint32_t>(fill);
    draw_rectangle(left, top, left + CARD_WIDTH, top + CARD_HEIGHT, false);
    draw_state().colour = CARD_BORDER;
    draw_rectangle(left, top, left + CARD_WIDTH, top + CARD_HEIGHT, true);
    if (matched) {
      // Saving will overwrite this one: its frame beats.
      draw_state().colour = static_cast<uint32_t>(make_colour_hsv(10, 100, 255));
      for (double w = 0; w <= pulse + 1; ++w) draw_rectangle(left - w, top - w, left + CARD_WIDTH + w, top + CARD_HEIGHT + w, true);
    }
    const double x = left + 80;
    draw_art("icona_progetto", left + 40, top + CARD_HEIGHT / 2, 1, 1);
    draw_state().colour = 0;
    draw_set_font(FONT_TITLE);
    draw_text_transformed(x, top + 5, fitted_title(card.titolo, TITLE_SCALE), TITLE_SCALE, TITLE_SCALE, 0);
    draw_set_font(FONT_LABEL);
    draw_state().colour = 4210752;
    draw_text(x, top + 30, day_text(card.data));
    draw_text(x, top + 55, time_text(card.data));
  }
}

void ProjectScreen::scroll() {
  const double c = last_column(progetto.size());
  const double mx = mouse_x();
  if (mouse_y() <= SCROLL_FLOOR_Y || c <= 700) return;
  if (mx > ENVIRONMENT_WIDTH - SCROLL_MARGIN) cc = std::max(cc - (mx - (ENVIRONMENT_WIDTH - SCROLL_MARGIN)), -(c - 715));
  if (mx < SCROLL_MARGIN && cc < 0) cc = std::min(cc + (SCROLL_MARGIN - mx), 0.0);
}

void ProjectScreen::draw_button(const char* label, double x, const char* art, double width, bool dimmed) {
  const double alpha = dimmed ? 0.4 : 1;
  draw_art(art, x, 75, width / 140, alpha);
  draw_set_font(FONT_TITLE);
  draw_set_halign(TEXT_ALIGN_CENTRE);
  draw_set_valign(TEXT_ALIGN_CENTRE);
  draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
  draw_state().alpha = alpha;
  draw_text_transformed(x, 75, label, 0.35, 0.35, 0);
  draw_state().alpha = 1;
  draw_set_halign(TEXT_ALIGN_START);
  draw_set_valign(TEXT_ALIGN_START);
}

void draw_name_frame(double x1, double y1, double x2, double y2) {
  draw_state().colour = static_cast<uint32_t>(COLOUR_WHITE);
  draw_roundrect_ext(x1, y1, x2, y2, 12, 12, false);
}

ObjInputText& ProjectScreen::make_name_field(double fx, double fy, double width, const std::string& text) {
  // The line of the label font sits in the middle of the field's frame a little lower down.
  constexpr double LINE_DROP = 7;
  ObjInputText& field = *input_text_new(static_cast<float>(fx), static_cast<float>(fy + LINE_DROP));
  field.construct(false, width, -1, FONT_LABEL, 4210752, 1, -1, 100, -1, -1, 0, 0, true, 0);
  field.enable();
  field.set_misc(true, 0, 20, 1, 1, static_cast<uint32_t>(COLOUR_WHITE), 1, true);
  field.set_text_from_outside(text);
  box_titolo = field.id;
  return field;
}

ObjInputText* ProjectScreen::name_field() const {
  return box_titolo < 0 ? nullptr : static_cast<ObjInputText*>(instance_find(box_titolo));
}

void ProjectScreen::close_name_field() {
  if (ObjInputText* field = name_field()) instance_destroy(*field);
  box_titolo = -1;
}

void ProjectScreen::back_to_editor(int alarm_index) {
  // The field belongs to the file room and goes with it.
  box_titolo = -1;
  // What was still to come on this screen (the field, the chooser) goes with it.
  for (int32_t& pending : alarm) pending = -1;
  room_goto(ROOM_EDITOR);
  alarm[alarm_index] = 1;
}

void ProjectScreen::end_in_editor() {
  if (EditorCtrl* editor = editor_ctrl()) editor->box().enable();
  instance_destroy(*this);
}

void ProjectScreen::answer_close_request() {
  if (current_room_index() == ROOM_PROGETTI && window_command_check(WINDOW_COMMAND_CLOSE)) back_to_editor(2);
}
