// The palette as a learner uses it: a press on a header icon opens its
// panel, a press on an element writes its text at the caret and closes the
// panel. Every element of every panel is pressed in turn; what each wrote
// is kept in golden/insertions.txt, one element a line.
#include <filesystem>
#include <string>
#include <vector>

#include "environment/editor/environment_globals.h"
#include "environment/editor/header_buttons.h"
#include "environment/editor/pop_up.h"
#include "environment/environment_fixture.h"
#include "environment/palette/palette_catalogue.h"
#include "environment/palette/palette_element.h"
#include "environment/run_fixture.h"
#include "environment/text_control/input_text.h"
#include "runtime/Graphics/ImageFile.h"
#include "runtime/Graphics/Screen.h"
#include "runtime/Platform/KeyCodes.h"
#include "runtime/Run/Frame.h"
#include "runtime/IO/FileNames.h"
#include "support/Golden.h"
#include "support/NumberedLines.h"

namespace {

namespace fs = std::filesystem;

constexpr int ICON_Y = 23;
// The header's icon of each panel, by its x.
constexpr int COSTRUTTI = 370, FUNZIONI = 410, COLORI = 550, NOTE = 590, SUONI = 630, FONT = 670, VARIABILI = 710,
              KIT = 330, TASTIERA = 950;
constexpr int GRACE = 11;  // steps before a press anywhere closes a panel

std::string visible(const std::string& text) {
  std::string out;
  for (char c : text) out += c == '\n' ? std::string("\\n") : std::string(1, c);
  return out;
}

class Palette : public EnvironmentTest {
 protected:
  static std::vector<CInstance*> elements(const char* object) {
    std::vector<CInstance*> out;
    for (CInstance* i : object_get(object_find(object))->instances) {
      if (i->active()) out.push_back(i);
    }
    return out;
  }
  // Steps without drawing: the palette acts in Step and in the mouse events, and the draws would cost
  // most of this test's time. A full frame before each opening frees what the last panel left.
  static void steps(int n) {
    for (int k = 0; k < n; ++k) {
      input_begin_frame();
      frame_update();
    }
  }
  static void tap(int x, int y) {
    input_mouse_move(x, y);
    input_mouse_button_event(MOUSE_LEFT, true);
    steps(1);
    input_mouse_button_event(MOUSE_LEFT, false);
  }
  static void open(int icon_x) {
    frames(1);
    tap(icon_x, ICON_Y);
  }
  static size_t panel_elements() {
    size_t n = 0;
    for (const char* object : {"costrutto_int", "funzione_int", "funzioni_int", "tastiera_simboli", "costante_suono_int",
                               "variabile_int", "font_int", "color_icon", "piano_key", "tasto_princ_funz"}) {
      n += elements(object).size();
    }
    return n;
  }
  // The box holding "AB" with the caret between the two letters.
  static void caret_between_a_and_b() {
    ObjInputText& box = editor().box();
    box.set_text_from_outside("AB");
    box.cursor_special = 1;
    box.cursor_position = 2;
    steps(1);
  }
  // Presses (x, y) after the grace; returns what went in between "A" and "B", and checks where the caret stands.
  std::string press_element(int x, int y, bool caret_at_end = false) {
    caret_between_a_and_b();
    steps(GRACE);
    tap(x, y);
    steps(1);
    const ObjInputText& box = editor().box();
    const std::string text = box.text_utf8();
    EXPECT_TRUE(text.starts_with("A") && text.ends_with("B")) << text;
    const int inserted = static_cast<int>(box.text.size()) - 2;
    EXPECT_EQ(box.caret(), caret_at_end ? inserted + 3 : inserted + 2) << visible(text);
    EXPECT_EQ(panel_elements(), 0u) << "the press closes the panel";
    EXPECT_EQ(environment_globals().ico_select, 0);
    return text.substr(1, text.size() - 2);
  }
  static int left(const CInstance* i) { return static_cast<int>(i->x); }
  static int top(const CInstance* i) { return static_cast<int>(i->y); }

  std::string golden_;
  void record(const char* panel, const std::string& label, const std::string& inserted) {
    golden_ += std::string(panel) + " | " + label + " | " + visible(inserted) + "\n";
  }
};

TEST_F(Palette, EveryElementOfEveryPanelWritesItsTextAtTheCaret) {
  // Constructs: the skeleton sends the caret to the end of the text.
  for (size_t k = 0; k < 6; ++k) {
    open(COSTRUTTI);
    const CInstance* card = elements("costrutto_int").at(k);
    record("Costrutti", std::to_string(k), press_element(left(card) + 12, top(card) + 12, k == 0));
  }
  // Functions, three levels down: group, category, function.
  for (int group = 0; group < FUNCTION_GROUPS; ++group) {
    const CategoryRange range = group_categories(group);
    for (int category = range.first; category <= range.last; ++category) {
      for (size_t f = 0; f < category_functions(category).size(); ++f) {
        open(FUNZIONI);
        const CInstance* button = elements("tasto_princ_funz").at(static_cast<size_t>(group));
        tap(left(button) + 40, top(button) + 40);
        const CInstance* category_button = elements("funzioni_int").at(static_cast<size_t>(category - range.first));
        tap(left(category_button) + 20, top(category_button) + 20);
        const std::vector<CInstance*> functions = elements("funzione_int");
        ASSERT_EQ(functions.size(), category_functions(category).size()) << category;
        const auto* function = functions[f];
        const std::string label = category_functions(category)[f].label;
        record(category_name(category), label, press_element(left(function) + 15, top(function) + 15));
      }
    }
  }
  struct Listed {
    int icon;
    const char* object;
    const char* panel;
    int dx, dy;  // where a press goes, from the element's corner
  };
  for (const Listed& list : {Listed{COLORI, "color_icon", "Colori", 40, 40},
                             Listed{NOTE, "piano_key", "Note musicali", 30, 200},
                             Listed{SUONI, "costante_suono_int", "Suoni", 20, 15},
                             Listed{FONT, "font_int", "Tipi di carattere", 20, 20},
                             Listed{VARIABILI, "variabile_int", "Variabili", 20, 15}}) {
    open(list.icon);
    const size_t count = elements(list.object).size();
    for (size_t k = 0; k < count; ++k) {
      if (k > 0) open(list.icon);
      const auto* element = elements(list.object).at(k);
      // A black key is pressed where it hangs over the white ones.
      const int dy = element->depth < 0 ? 60 : list.dy;
      const std::string label = static_cast<const PaletteElement*>(element)->text;  // the press destroys the element
      record(list.panel, label, press_element(left(element) + list.dx, top(element) + dy));
    }
  }
  for (int key = 0; key < 21; ++key) {
    open(TASTIERA);
    const auto* keyboard = elements("tastiera_simboli").at(0);
    record("Tastiera simboli", std::to_string(key),
           press_element(left(keyboard) + 46 * (key % 7) + 23, top(keyboard) + 46 * (key / 7) + 23));
  }
  expect_golden(fs::path(VELANT_SOURCE_DIR) / "tests/environment/palette/golden/insertions.txt", golden_);
}

TEST_F(Palette, TheSkeletonAndEveryConstructMakeAProgramThatRuns) {
  ObjInputText& box = editor().box();
  // What a learner types between the presses: the start value of the loops' variable on the skeleton's
  // blank line of INIZIA, and a line feed after each single-line statement.
  const auto type_at = [&box](size_t position, const std::string& text) {
    box.replace_from_outside(static_cast<int>(position) + 1, static_cast<int>(position) + 1, text);
    steps(1);
  };
  for (size_t k = 0; k < 6; ++k) {
    open(COSTRUTTI);
    steps(GRACE);
    const CInstance* card = elements("costrutto_int").at(k);
    tap(left(card) + 12, top(card) + 12);
    steps(1);
    const std::string text = box.text_utf8();
    EXPECT_EQ(box.caret(), static_cast<int>(box.text.size()) + 1) << "each went in at the end";
    if (k == 0) {
      type_at(text.find("\n", text.find("\n") + 1) + 1, "x = 10");
      box.cursor_position = static_cast<int>(box.text.size()) + 1;
    }
    if (k == 1 || k == 2) type_at(box.text.size(), "\n");
  }
  TempFolder run_folder("velant_palette_run");
  const RunResult r = run_velant(run_folder.path(), box.text_utf8(), "--frames 5 --vars");
  EXPECT_EQ(r.status, 0) << r.out << box.text_utf8();
  EXPECT_EQ(r.value("x"), "10");
  EXPECT_EQ(r.value("i"), "10") << "the repeat block counted its ten passes";
}

TEST_F(Palette, PanelsCloseOnAPressAnywhereAfterTheirGraceAndReopenFresh) {
  open(COLORI);
  ASSERT_EQ(elements("color_icon").size(), 30u);
  EXPECT_EQ(static_cast<HeaderButton*>(elements("icona_gen").at(3))->select, 1) << "the Colori icon is highlighted";
  tap(1250, 650);
  steps(1);
  EXPECT_EQ(elements("color_icon").size(), 30u) << "within the grace the panel stays";
  steps(GRACE);
  tap(1250, 650);
  steps(1);
  EXPECT_EQ(panel_elements(), 0u);
  EXPECT_EQ(static_cast<HeaderButton*>(elements("icona_gen").at(3))->select, 0);

  // Pressing the icon of the open panel closes it and opens it again, rebuilt.
  open(SUONI);
  const int32_t first_id = elements("costante_suono_int").at(0)->id;
  steps(GRACE);
  open(SUONI);
  steps(1);
  ASSERT_EQ(elements("costante_suono_int").size(), 16u);
  EXPECT_NE(elements("costante_suono_int").at(0)->id, first_id);
  EXPECT_EQ(environment_globals().ico_select, 1);

  // With Ctrl held a piano key writes nothing and the panel stays, for trying a melody.
  open(NOTE);
  caret_between_a_and_b();
  steps(GRACE);
  input_key_event(KEY_CONTROL, true);
  const CInstance* do_key = elements("piano_key").at(0);
  tap(left(do_key) + 30, top(do_key) + 200);
  steps(1);
  input_key_event(KEY_CONTROL, false);
  EXPECT_EQ(editor().box().text_utf8(), "AB");
  EXPECT_EQ(elements("piano_key").size(), 12u);

  // A selection stays as text: the snippet goes in at the caret and the highlight goes.
  ObjInputText& box = editor().box();
  box.set_text_from_outside("uno due");
  steps(1);
  box.selection_start = 1;
  box.selection_end = 4;
  box.cursor_position = 4;
  open(VARIABILI);
  steps(GRACE);
  const CInstance* mouse_x = elements("variabile_int").at(0);
  tap(left(mouse_x) + 20, top(mouse_x) + 15);
  steps(1);
  EXPECT_EQ(box.text_utf8(), "unox del mouse  due");
  EXPECT_FALSE(box.has_selection());

  // The undo icon only gives the box back.
  open(990);
  EXPECT_EQ(environment_globals().ico_select, 0);
}

TEST_F(Palette, AReadyKitOpensAtOnceOverSavedWorkAndAfterTheQuestionOverUnsavedWork) {
  file_folders_set({file_folders().save_area, std::string(VELANT_SOURCE_DIR) + "/examples/", ""});
  const auto press_kit = [](size_t k) {
    open(KIT);
    ASSERT_EQ(elements("funzione_int").size(), ready_kits().size());
    steps(GRACE);
    const CInstance* kit = elements("funzione_int").at(k);
    tap(left(kit) + 15, top(kit) + 15);
    frames(2);
  };
  const auto kit_text = [](size_t k) {
    std::string text = read_whole_file(fs::path(VELANT_SOURCE_DIR) / "examples/kit pronti" / ready_kits()[k].file);
    std::erase(text, '\r');
    return text;
  };
  environment_globals().nome_progetto = "compito";
  press_kit(2);
  EXPECT_EQ(editor().whole_program() + "\n", kit_text(2)) << "nothing unsaved: the kit opens at once";
  EXPECT_EQ(environment_globals().nome_progetto, "") << "saving must not overwrite the project that was open";

  editor().box().set_text_from_outside("il mio lavoro");
  frames(1);
  press_kit(3);
  const CObject* pop_ups = object_get(object_find("pop_up"));
  ASSERT_EQ(pop_ups->instances.size(), 1u);
  const auto* question = static_cast<const PopUp*>(pop_ups->instances.front());
  EXPECT_EQ(question->text, "Se apri un kit pronto il tuo\r\nlavoro attuale verrà cancellato");
  EXPECT_EQ(question->kit, 1);
  click(650 + 50, 350 + 200);  // "Annulla"
  EXPECT_EQ(editor().box().text_utf8(), "il mio lavoro");
  press_kit(3);
  click(650 - 220, 350 + 200);  // "Elimina"
  frames(1);
  EXPECT_EQ(editor().whole_program() + "\n", kit_text(3));
}

TEST_F(Palette, TheTutorialPhraseBringsTheDirectionGame) {
  ObjInputText& box = editor().box();
  box.set_text_from_outside("usa gioco delle direzioni");
  frames(2);
  ASSERT_EQ(elements("gioco_mov_int").size(), 6u);
  EXPECT_EQ(box.text_utf8(), "usa gioco delle direzioni\n") << "a fresh line for the moves";
  for (const auto& [x, y] : {std::pair{1150, 500}, std::pair{1050, 600}, std::pair{1050, 130}}) click(x, y);
  EXPECT_EQ(box.text_utf8(),
            "usa gioco delle direzioni\nmuovi a destra --> (CASELLE: 1)\nmuovi in basso --> (CASELLE: 1)\n"
            "cambia colore del corpo del personaggio --> (COLORE: azzurro)\n");
  box.set_text_from_outside("");
  frames(2);
  EXPECT_EQ(elements("gioco_mov_int").size(), 0u);
}

// The two panels drawn as a learner sees them; the pictures stay beside the test program.
TEST_F(Palette, FunzioniAtItsThirdLevelAndColoriAreDrawnFinished) {
  const auto shown = [this](const char* name) {
    frames(2);
    Image image;
    EXPECT_TRUE(screen_read(image));
    image_save_png((previous_ / name).string(), image);
    return image;
  };
  editor().box().set_text_from_outside("INIZIA\nCICLO CONTINUO\n");
  open(FUNZIONI);
  tap(330 + 40, 81 + 40);    // the drawing group
  tap(525 + 20, 80 + 20);    // "Disegno geometrico"
  input_mouse_move(840, 170);  // over "disegna triangolo"
  Image funzioni = shown("palette_funzioni.png");
  const auto orange = [&funzioni](int x, int y) {
    const Rgb p = pixel(funzioni, x, y);
    return p.r > p.g + 50 && p.g > p.b + 20;
  };
  EXPECT_TRUE(orange(900, 78)) << "the first function's pill, in the drawing group's orange";
  EXPECT_FALSE(orange(1000, 88)) << "no wider than its label";
  EXPECT_TRUE(orange(1000, 375)) << "\"disegna poligono regolare\" needs a wider one";
  EXPECT_TRUE(orange(340, 140)) << "the drawing group's button";
  EXPECT_TRUE(orange(530, 140)) << "a category of the drawing group";

  frames(GRACE);
  tap(1250, 650);
  open(COLORI);
  input_mouse_move(245 + 45, 103 + 45);  // over "rosso"
  Image colori = shown("palette_colori.png");
  EXPECT_TRUE(same_colour(pixel(colori, 245 + 45, 103 + 60), RED, 39)) << "the red swatch";
  EXPECT_TRUE(same_colour(pixel(colori, 245 + 545, 503 + 60), BLACK, 39)) << "the black swatch";
  EXPECT_TRUE(same_colour(pixel(colori, 1140, 395), WHITE, 39)) << "the box with the swatch's red, green and blue";
}

TEST_F(Palette, ASnippetThatOverfillsThePageGoesOnToTheNextOneWhole) {
  const std::string page = numbered_lines(1, 38) + "\n";
  ObjInputText& box = editor().box();
  box.set_text_from_outside(page);
  steps(1);
  box.cursor_position = static_cast<int>(box.text.size()) + 1;
  open(COSTRUTTI);
  steps(GRACE);
  const CInstance* repeat = elements("costrutto_int").at(3);
  tap(left(repeat) + 12, top(repeat) + 12);
  frames(2);
  std::string snippet = costrutto_text(Costrutto::Ripeti);
  std::erase(snippet, '\r');
  EXPECT_EQ(editor().whole_program(), page + snippet) << "nothing of the program or of the block is lost";
  ASSERT_EQ(editor().n_slide, 2);
  EXPECT_EQ(editor().slide_index, 2) << "the caret's page is on show";
  EXPECT_EQ(box.caret(), static_cast<int>(box.text.size()) + 1) << "behind the block";
}

}  // namespace
