// The text of funzioni_di_disegno: what each key of disegna testo makes of
// the runtime's drawing of text on the plain and on the full road, the
// draw state it leaves, and the fonts of ottieni_stile_testo.
#include <functional>

#include "funzioni_di_disegno_fixture.h"
#include "runtime/Graphics/TextDrawing.h"

namespace {

class DisegnoTesto : public DrawingProgramTest {
 protected:
  // The full road's drawing of `text` at (x, y) with the other keys at their defaults.
  static void full(double x, double y, std::string_view text, double separation = 20, double width = 2000,
                   double scale = 1, double turn = 0) {
    draw_text_ext_transformed(x, y, text, separation, width, scale, scale, turn);
  }
  // The environment's draw state for text: its font, black, opaque, left and top.
  static void environment_state() {
    draw_set_font(0);
    draw_state().colour = 0;
    draw_state().alpha = 1;
    draw_set_halign(TEXT_ALIGN_START);
    draw_set_valign(TEXT_ALIGN_START);
  }
};

TEST_F(DisegnoTesto, EachStatementDrawsAsTheRuntimeDrawsItsTextAndPutsTheStateBack) {
  // A bold, slanted font of the test's own, set before each statement: a text without STILE is in the
  // environment's font.
  const int32_t big = font_add("DejaVuSans.ttf", 40, true, true, 32, 128);
  ASSERT_TRUE(font_exists(big));
  struct Written {
    std::string statement;
    std::function<void()> expected;
  };
  // clang-format off
  const Written cases[] = {
      // The default TESTO has no quotes: it names a variable, and there is none.
      {"disegna testo", [] { full(150, 150, "no var"); }},
      {"disegna testo (TESTO: frase)", [] { full(150, 150, "Ciao"); }},
      {"disegna testo (TESTO: \"Ciao <nome>\")", [] { full(150, 150, "Ciao Ada"); }},
      // Of a number stored with 30 decimals the point and ten zeros go, the
      // other twenty stay; a computed number shows at most two decimals.
      {"disegna testo (TESTO: \"<due> <due/4>\")", [] { full(150, 150, "200000000000000000000 0.50"); }},
      // The round brackets of the text stay round; genitives and line breaks are worked out.
      {"disegna testo (TESTO: \"(uno) (due) (tre) (quattro)\")", [] { full(150, 150, "(uno)(due)(tre)(quattro)"); }},
      {"disegna testo (TESTO: \"punti_del_gatto\")", [] { full(150, 150, "punti del gatto"); }},
      {"disegna testo (TESTO: \"uno(a capo)due\")", [] { full(150, 150, "uno\r\n\t\tdue"); }},
      // LARGHEZZA CASELLA 800 with an INTERLINEA other than 20 and all else at its default
      // takes the plain road: the text as the tokeniser wrote it, not filled.
      {"disegna testo (X: 20, Y: 30, TESTO: \"<n>\", LARGHEZZA CASELLA: 800, INTERLINEA: 30)",
       [] { draw_text(20, 30, " < n > "); }},
      {"disegna testo (X: 20, Y: 30, TESTO: \"<n>\", LARGHEZZA CASELLA: 800, INTERLINEA: 20)",
       [] { full(20, 30, "WWWWWWWWWWWWWWWW", 20, 800); }},
      {"disegna testo (X: 20, Y: 20, TESTO: \"uno due tre\", LARGHEZZA CASELLA: 10, INTERLINEA: 50)",
       [] { full(20, 20, "uno due tre", 50, 10); }},
      {"disegna testo (X: 200, Y: 300, TESTO: \"Ciao\", SCALA: 2, ROTAZIONE: 90)",
       [] { full(200, 300, "Ciao", 20, 2000, 2, 90); }},
      {"disegna testo (X: 20, Y: 20, TESTO: \"MMMM\", COLORE: rosso, TRASPARENZA: 0,5)",
       [] { draw_state().colour = 255; draw_state().alpha = 0.5; full(20, 20, "MMMM"); }},
      {"disegna testo (X: 200, Y: 100, TESTO: \"Ciao\", ALLINEAMENTO ORIZZONTALE: a destra)",
       [] { draw_set_halign(TEXT_ALIGN_END); full(200, 100, "Ciao"); }},
      {"disegna testo (X: 200, Y: 100, TESTO: \"Ciao\", ALLINEAMENTO ORIZZONTALE: al centro)",
       [] { draw_set_halign(TEXT_ALIGN_CENTRE); full(200, 100, "Ciao"); }},
      {"disegna testo (X: 200, Y: 100, TESTO: \"Ciao\", ALLINEAMENTO VERTICALE: in basso)",
       [] { draw_set_valign(TEXT_ALIGN_END); full(200, 100, "Ciao"); }},
      {"disegna testo (X: 200, Y: 100, TESTO: \"Ciao\", ALLINEAMENTO VERTICALE: al centro)",
       [] { draw_set_valign(TEXT_ALIGN_CENTRE); full(200, 100, "Ciao"); }},
      {"disegna testo (X: 20, Y: 20, TESTO: \"MMMM\", STILE: " + std::to_string(big) + ")",
       [big] { draw_set_font(big); full(20, 20, "MMMM"); }},
  };
  // clang-format on
  for (const Written& c : cases) {
    SCOPED_TRACE(c.statement);
    clear_canvas();
    draw_set_font(big);
    run_one_frame(c.statement, "nome = \"Ada\"\nfrase = \"Ciao\"\ndue = ottieni colore rgb (ROSSO: 2)\n"
                               "n = \"WWWWWWWWWWWWWWWW\"");
    const std::vector<uint8_t> drawn = canvas_pixels();
    EXPECT_TRUE(ink().any());
    EXPECT_EQ(text_state().font, 0);
    EXPECT_EQ(text_state().halign, TEXT_ALIGN_START);
    EXPECT_EQ(text_state().valign, TEXT_ALIGN_START);
    EXPECT_EQ(draw_state().colour, 0u);
    EXPECT_EQ(draw_state().alpha, 1);
    clear_canvas();
    environment_state();
    c.expected();
    EXPECT_TRUE(drawn == canvas_pixels()) << "not drawn as the runtime draws it";
    environment_state();
  }
  font_delete(big);
}

TEST_F(DisegnoTesto, OttieniStileTestoAddsAFontOrGivesTheEnvironmentFont) {
  ProgramInstance& p = run_start(
      "a = ottieni stile testo (CARATTERE: \"DejaVuSans.ttf\", DIMENSIONE: 30, GRASSETTO: 1, CORSIVO: 1)\n"
      "b = ottieni stile testo (CARATTERE: \"DejaVuSans.ttf\")\n"
      "c = ottieni stile testo\n"
      "d = ottieni stile testo (CARATTERE: \"Nessun carattere così.ttf\")");
  const auto a = static_cast<int32_t>(number(p, "a")), b = static_cast<int32_t>(number(p, "b"));
  EXPECT_EQ(stored(p, "a"), exact(a));
  ASSERT_NE(font_get(a), nullptr);
  ASSERT_NE(font_get(b), nullptr);
  EXPECT_NE(a, b);  // every call adds a font
  EXPECT_NEAR(font_get(a)->size, 30 * 1.33333333, 0.01);
  EXPECT_TRUE(font_get(a)->bold && font_get(a)->italic);
  EXPECT_NEAR(font_get(b)->size, 12 * 1.33333333, 0.01);
  EXPECT_FALSE(font_get(b)->bold || font_get(b)->italic);
  EXPECT_EQ(stored(p, "c"), exact(0));
  EXPECT_EQ(stored(p, "d"), exact(0));
  // The environment's font is global.font once it is set.
  variable_set(global_object(), variable_id("font"), NO_ARRAY_INDEX, RValue::number(4));
  ProgramInstance& q = run_start("e = ottieni stile testo\nf = ottieni stile testo (CARATTERE: \"nessuno\")");
  EXPECT_EQ(stored(q, "e"), exact(4));
  EXPECT_EQ(stored(q, "f"), exact(4));
  for (int32_t added : {a, b}) font_delete(added);
}

}  // namespace
