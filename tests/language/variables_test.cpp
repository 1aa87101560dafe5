#include <cmath>
#include <random>
#include <set>

#include "language/evaluation/numeric_expression.h"
#include "support/program_fixture.h"
#include "runtime/Function/Random.h"

namespace {

class VariableTable : public ProgramTest {
 protected:
  // The names of `p`'s table below vari_size, in their order.
  static std::vector<std::string> names(const ProgramInstance& p) {
    std::vector<std::string> out;
    for (int k = 0; k < p.vari_size; ++k) out.emplace_back(p.vari[static_cast<size_t>(k)].string_view());
    return out;
  }
  static std::vector<std::string> values(const ProgramInstance& p) {
    std::vector<std::string> out;
    for (int k = 0; k < p.vari_size; ++k) out.emplace_back(p.val[static_cast<size_t>(k)].string_view());
    return out;
  }
  // Runs the plain assignments between positions `from` and `to`.
  static void run_between(ProgramInstance& p, int from, int to) {
    for (int k = from; k + 1 < to; ++k) {
      if (p.token_text(k + 1) == "=") p.var_update_direct(p.token_text(k), k);
    }
  }
};

const std::string RULE(71, '_');

using Texts = std::vector<std::string>;

}  // namespace

TEST_F(VariableTable, TableStandsInReverseOrderOfFirstAssignment) {
  ProgramInstance& p = program(
      "INIZIA\nA = 1\nB = ottieni il seno di (VALORE: 30)\nA = 3\nS = \"ciao\"\n"
      "CICLO CONTINUO\nC = A + 2\nB = 4\nD = ottieni il seno di (VALORE: 0)\n");
  EXPECT_EQ(names(p), (Texts{"D", "C", "S", "B", "A", "nome_finestra", "larghezza_finestra", "altezza_finestra",
                             "colore_sfondo"}));
  // Any plain assignment starts the variable at "0"; one only from a value function is not set yet.
  EXPECT_EQ(values(p), (Texts{"|not_set|", "0", "0", "0", "0", "0", "0", "0", "0"}));
  EXPECT_EQ(p.vari_size, 9);
  EXPECT_EQ(p.entered_vari, "|colore_sfondo||altezza_finestra||larghezza_finestra||nome_finestra||A||B||S||C||D|");

  // An element's table goes on behind the entries it was given, without the
  // names it has or the program has already.
  ProgramInstance& e = bare_program(true);
  e.append_variable("", RValue::text(""));
  e.append_variable("vite", RValue::text("3"));
  e.entered_vari = "|vite|";
  tokenise(e, "INIZIA\nvite = 5\nA = 2\nX = 1\nY = 2\n");
  e.var_inizialization(2);
  EXPECT_EQ(names(e), (Texts{"", "vite", "Y", "X"}));
  EXPECT_EQ(values(e), (Texts{"", "3", "0", "0"}));
  EXPECT_EQ(e.vari_size, 4);
  EXPECT_EQ(e.entered_vari, "|vite||X||Y|");
}

TEST_F(VariableTable, ANameReadBeforeItsAssignmentIsZero) {
  ProgramInstance& p = program("INIZIA\nY = X + 1\nCICLO CONTINUO\nX = 5\n");
  // X is assigned only in CICLO_CONTINUO: read in INIZIA, it is the table's start value.
  EXPECT_EQ(p.cal_var_and_const("X"), "0");
  run_between(p, 0, p.program.DISEGNA);
  EXPECT_EQ(stored(p, "Y"), "1");
  run_between(p, p.program.DISEGNA, p.program.totale_tok);
  EXPECT_EQ(stored(p, "X"), "5");
  EXPECT_EQ(calculate_string(p, "X*2"), "10.0000000000");
  EXPECT_EQ(p.calculate_var("X"), "5");
  EXPECT_EQ(p.calculate_var("Z"), "no var");
}

TEST_F(VariableTable, AssignmentStoresTheValueOrItsNegation) {
  ProgramInstance& p = program(
      "INIZIA\nA = 2+3*4\nB = non A\nC = non 0\nD = \"ciao mondo\"\nE = non 0.4\nF = non 0.6\nG = A\n");
  run_assignments(p);
  EXPECT_EQ(stored(p, "A"), "14");
  EXPECT_EQ(stored(p, "B"), "0");
  EXPECT_EQ(stored(p, "C"), "1");
  EXPECT_EQ(stored(p, "D"), "\"ciao mondo\"");
  EXPECT_EQ(stored(p, "E"), "1");
  EXPECT_EQ(stored(p, "F"), "0");
  EXPECT_EQ(stored(p, "G"), "14");
  // A name that isn't in the table is left alone.
  const int size = p.vari_size;
  p.var_update_direct("nuovo", position(p, "A"));
  EXPECT_EQ(p.find_variable("nuovo"), -1);
  EXPECT_EQ(p.vari_size, size);
  EXPECT_TRUE(messages_.empty());
}

TEST_F(VariableTable, AttributesWriteThroughToTheInstance) {
  ProgramInstance& p = program(
      "INIZIA\nX = 120\nY = 40\nDIREZIONE = 90\nVELOCITA = 3\nTRASPARENZA = 0.5\nROTAZIONE = 45\n"
      "SCALA ASSE X = 2\nSCALA ASSE Y = 3\nVELOCITA ANIMAZIONE = 0.25\nFOTOGRAMMA = 2\nCOLORE = rosso\n"
      "TIMER 1 = 2\nTIMER 4 = 0.5\nDURATA = 1.5\n");
  run_assignments(p);
  const CInstance& i = p.instance;
  EXPECT_EQ(i.x, 120);
  EXPECT_EQ(i.y, 40);
  EXPECT_EQ(i.direction, 90);
  EXPECT_EQ(i.speed, 3);
  // Speed and direction give the motion's other side.
  EXPECT_NEAR(i.hspeed, 0, 1e-5);
  EXPECT_NEAR(i.vspeed, -3, 1e-5);
  EXPECT_EQ(i.image_alpha, 0.5f);
  EXPECT_EQ(i.image_angle, 45);
  EXPECT_EQ(i.image_xscale, 2);
  EXPECT_EQ(i.image_yscale, 3);
  EXPECT_EQ(i.image_speed, 0.25f);
  EXPECT_EQ(i.image_index, 2);
  EXPECT_EQ(i.image_blend, 255);
  // Seconds become frames.
  EXPECT_EQ(p.timer[0], 60);
  EXPECT_EQ(p.timer[1], 0);
  EXPECT_EQ(p.timer[3], 15);
  EXPECT_EQ(p.durata, 45);
  EXPECT_EQ(stored(p, "X"), "120");
  EXPECT_EQ(stored(p, "TIMER_1"), "2");
}

TEST_F(VariableTable, ReservedNamesSetTheWindow) {
  ProgramInstance& p = program(
      "INIZIA\nlarghezza finestra = 500\naltezza finestra = 200+50\ncolore sfondo = -1\n"
      "nome finestra = \"Il mio gioco\"\nCICLO CONTINUO\ncolore sfondo = verde\n");
  EXPECT_EQ(p.larghezza_finestra, 1000);
  EXPECT_EQ(p.altezza_finestra, 700);
  run_between(p, 0, p.program.DISEGNA);
  EXPECT_EQ(p.larghezza_finestra, 500);
  EXPECT_EQ(p.altezza_finestra, 250);
  // "-1" leaves the colour and the grid as they are.
  EXPECT_EQ(p.colore_sfondo, 32896);
  EXPECT_EQ(p.griglia_visibile, 1);
  EXPECT_EQ(p.room_caption, "\"Il mio gioco\"");
  EXPECT_EQ(p.nome_finestra, "Il mio gioco");
  run_between(p, p.program.DISEGNA, p.program.totale_tok);
  EXPECT_EQ(p.colore_sfondo, 65280);
  EXPECT_EQ(p.griglia_visibile, 0);

  // The table answers first: the program assigned these names.
  EXPECT_EQ(p.cal_var_and_const("larghezza_finestra"), "500");
  EXPECT_EQ(p.cal_var_and_const("nome_finestra"), "\"Il mio gioco\"");
}

TEST_F(VariableTable, WindowNamesReadTheRoomAndTheProgramsWindow) {
  ProgramInstance& main = bare_program();
  main.colore_sfondo = 255;
  main.room_caption = "\"Titolo\"";
  ProgramInstance& other = bare_program();
  EXPECT_EQ(other.cal_var_and_const("larghezza_finestra"), std::to_string(ROOM_WIDTH));
  EXPECT_EQ(other.cal_var_and_const("altezza_finestra"), std::to_string(ROOM_HEIGHT));
  EXPECT_EQ(other.cal_var_and_const("colore_sfondo"), "255");
  EXPECT_EQ(other.cal_var_and_const("nome_finestra"), "\"Titolo\"");
  EXPECT_EQ(other.cal_var_and_const("ripetizione"), "1");
  other.ripetizione = 7;
  EXPECT_EQ(other.cal_var_and_const("ripetizione"), "7");
  EXPECT_EQ(main.cal_var_and_const("ripetizione"), "1");
}

TEST_F(VariableTable, NumbersSignsAndUnknownNames) {
  ProgramInstance& p = program("INIZIA\nQ = 5gatti + 1\n");
  for (const char* own : {"5gatti", " 3", "-2", "-0.5", "+", "-", "*", "/", "^", "|not_set|"}) {
    EXPECT_EQ(p.cal_var_and_const(own), own);
  }
  run_assignments(p);
  // A name that begins with a digit is a number text.
  EXPECT_EQ(stored(p, "Q"), "6");
  EXPECT_EQ(p.cal_var_and_const("sconosciuto"), "0");
  EXPECT_EQ(p.cal_var_and_const("-X"), "0");
  // Colours are numbers only as whole tokens; attributes only on an element.
  EXPECT_EQ(p.cal_var_and_const("rosso"), "0");
  EXPECT_EQ(p.cal_var_and_const("|x"), "0");
  EXPECT_EQ(p.cal_var_and_const("se_stesso"), "0");
}

TEST_F(VariableTable, TruthWordsNotesAndNumericConstants) {
  ProgramInstance& p = program("INIZIA\nM = un mezzo + mezza\nN = mezza\nO = Pi greco * 2\n");
  for (const char* word : {"vero", "intero", "intera"}) EXPECT_EQ(p.cal_var_and_const(word), "1");
  for (const char* word : {"falso", "nullo", "niente"}) EXPECT_EQ(p.cal_var_and_const(word), "0");
  EXPECT_EQ(p.cal_var_and_const("Do"), "1");
  EXPECT_EQ(p.cal_var_and_const("Fa_diesis"), "1.412213740458015");
  EXPECT_EQ(p.cal_var_and_const("Si_bemolle"), "1.778625954198473");
  EXPECT_EQ(p.cal_var_and_const("Pi_greco"), "3.1415926535");
  EXPECT_EQ(p.cal_var_and_const("due_terzi"), "0.6666666666");
  EXPECT_EQ(p.cal_var_and_const("un_mezzo"), "0.5");
  // "mezza" and "mezzo" are a half only as whole tokens.
  EXPECT_EQ(p.cal_var_and_const("mezza"), "0");
  EXPECT_EQ(p.cal_var_and_const("mezzo"), "0");
  run_assignments(p);
  EXPECT_EQ(stored(p, "M"), "0.5");
  EXPECT_EQ(stored(p, "N"), "0.5");
  // A product left alone keeps its ten decimals.
  EXPECT_EQ(stored(p, "O"), "6.2831853070");
}

TEST_F(VariableTable, KeysAndMouseReadTheFrameInput) {
  ProgramInstance& p = bare_program();
  const auto state = [&](const std::string& name) { return p.cal_var_and_const(name); };
  input_key_event(KEY_LETTER_A, true);
  input_key_event(KEY_UP, true);
  input_key_event(KEY_DIGIT_0 + 7, true);
  input_mouse_button_event(MOUSE_RIGHT, true);
  input_mouse_move(30, 45);
  input_wheel(1);
  input_begin_frame();
  EXPECT_EQ(state("tasto_A_e_premuto"), "1");
  EXPECT_EQ(state("tasto_A_e_stato_premuto"), "1");
  EXPECT_EQ(state("tasto_A_e_stato_rilasciato"), "0");
  EXPECT_EQ(state("tasto_freccia_su_e_premuto"), "1");
  EXPECT_EQ(state("tasto_freccia_giu_e_premuto"), "0");
  EXPECT_EQ(state("tasto_7_e_premuto"), "1");
  EXPECT_EQ(state("tasto_invio_e_premuto"), "0");
  // Letters are named by their capitals only.
  EXPECT_EQ(state("tasto_a_e_premuto"), "0");
  EXPECT_EQ(state("tasto_destro_del_mouse_e_premuto"), "1");
  EXPECT_EQ(state("tasto_destro_del_mouse_e_stato_premuto"), "1");
  EXPECT_EQ(state("tasto_sinistro_del_mouse_e_premuto"), "0");
  EXPECT_EQ(state("x_del_mouse"), "30");
  EXPECT_EQ(state("y_del_mouse"), "45");
  EXPECT_EQ(state("rotella_del_mouse_in_su"), "1");
  EXPECT_EQ(state("rotella_del_mouse_in_giu"), "0");

  input_key_event(KEY_ENTER, true);
  input_key_event(KEY_LETTER_A, false);
  input_key_event(KEY_SPACE, true);
  input_mouse_button_event(MOUSE_RIGHT, false);
  input_begin_frame();
  EXPECT_EQ(state("tasto_invio_e_premuto"), "1");
  EXPECT_EQ(state("tasto_invio_e_stato_premuto"), "1");
  EXPECT_EQ(state("tasto_barra_spaziatrice_e_premuto"), "1");
  EXPECT_EQ(state("tasto_A_e_premuto"), "0");
  EXPECT_EQ(state("tasto_A_e_stato_rilasciato"), "1");
  // Still held, but no new press.
  EXPECT_EQ(state("tasto_freccia_su_e_premuto"), "1");
  EXPECT_EQ(state("tasto_freccia_su_e_stato_premuto"), "0");
  EXPECT_EQ(state("tasto_destro_del_mouse_e_stato_rilasciato"), "1");
  EXPECT_EQ(state("rotella_del_mouse_in_su"), "0");
}

TEST_F(VariableTable, RandomNamesDrawWithinTheRoom) {
  ProgramInstance& p = bare_program();
  const std::set<std::string> colours = {"255",      "16776960", "65535", "4235519", "16711680",
                                         "16777215", "32768",    "65280", "8388736"};
  std::set<std::string> drawn_colours;
  double largest_x = 0, largest_y = 0, largest_angle = 0;
  for (int k = 0; k < 400; ++k) {
    const double x = string_is_real(p.cal_var_and_const("x_casuale"));
    const double y = string_is_real(p.cal_var_and_const("y_casuale"));
    const double angle = string_is_real(p.cal_var_and_const("angolo_casuale"));
    ASSERT_TRUE(x >= 0 && x < ROOM_WIDTH) << x;
    ASSERT_TRUE(y >= 0 && y < ROOM_HEIGHT) << y;
    ASSERT_TRUE(angle >= 0 && angle < 360) << angle;
    largest_x = std::max(largest_x, x);
    largest_y = std::max(largest_y, y);
    largest_angle = std::max(largest_angle, angle);
    const std::string colour = p.cal_var_and_const("colore_casuale");
    ASSERT_TRUE(colours.count(colour)) << colour;
    drawn_colours.insert(colour);
  }
  EXPECT_GT(largest_x, ROOM_HEIGHT);
  EXPECT_GT(largest_y, 360);
  EXPECT_GT(largest_angle, 300);
  EXPECT_EQ(drawn_colours, colours);
  // The runtime's generator draws them: the same seed gives the same values.
  rt::random_set_seed(42);
  const std::string first = p.cal_var_and_const("x_casuale");
  rt::random_set_seed(42);
  EXPECT_EQ(p.cal_var_and_const("x_casuale"), first);
}

TEST_F(VariableTable, ElementsReadTheirOwnAttributesAndOthersThroughTheGenitive) {
  ProgramInstance& main = program("INIZIA\ngatto = 0\npunti = 10\n");
  run_assignments(main);
  ProgramInstance& gatto = bare_program(true);
  CInstance& g = gatto.instance;
  g.x = 12.5f;
  g.y = 40;
  g.depth = -3;
  g.image_alpha = 0.25f;
  g.alarm[5] = 90;
  gatto.timer[0] = 60;
  main.val[static_cast<size_t>(main.find_variable("gatto"))] = RValue::text(std::to_string(g.id));
  gatto.append_variable("", RValue::text(""));
  gatto.append_variable("vite", RValue::text("3"));
  gatto.append_variable("punti", RValue::text("4"));

  // An element's own attributes.
  EXPECT_EQ(gatto.cal_var_and_const("|x"), "12.50");
  EXPECT_EQ(gatto.cal_var_and_const("|y"), "40");
  EXPECT_EQ(gatto.cal_var_and_const("|z"), "-3");
  EXPECT_EQ(gatto.cal_var_and_const("|trasparenza"), "0.25");
  EXPECT_EQ(gatto.cal_var_and_const("|timer1"), "2");
  EXPECT_EQ(gatto.cal_var_and_const("|timer2"), "0");
  EXPECT_EQ(gatto.cal_var_and_const("|durata"), "3");
  EXPECT_EQ(gatto.cal_var_and_const("se_stesso"), std::to_string(g.id));
  // Its own entry wins over the program-wide one; the rest is the program's.
  EXPECT_EQ(gatto.cal_var_and_const("punti"), "4");
  EXPECT_EQ(main.cal_var_and_const("punti"), "10");
  EXPECT_EQ(gatto.cal_var_and_const("gatto"), std::to_string(g.id));
  EXPECT_EQ(gatto.calculate_var("punti"), "10");

  // The genitive, from anywhere, with the expression's brackets kept.
  EXPECT_EQ(main.cal_var_and_const("|x_del_gatto"), "12.50");
  EXPECT_EQ(main.cal_var_and_const("vite_del_gatto"), "3");
  EXPECT_EQ(main.cal_var_and_const("[vite_del_gatto]"), "[3]");
  EXPECT_EQ(main.cal_var_and_const("[[|y_del_gatto"), "[[40");
  EXPECT_EQ(calculate_string(main, "vite_del_gatto*2+|x_del_gatto"), "18.5");
  // An owner that is no instance, or a name the owner hasn't, is unknown.
  EXPECT_EQ(main.cal_var_and_const("vite_del_cane"), "0");
  EXPECT_EQ(main.cal_var_and_const("fame_del_gatto"), "0");
  // Mouse names are no genitive.
  input_mouse_move(7, 9);
  input_begin_frame();
  EXPECT_EQ(main.cal_var_and_const("x_del_mouse"), "7");

  // Without any element there is no genitive at all.
  programs_.erase(programs_.begin() + 1);
  EXPECT_FALSE(esemplare_exists());
  EXPECT_EQ(main.cal_var_and_const("vite_del_gatto"), "0");
}

TEST_F(VariableTable, AnElementsAssignmentReachesTheProgramTableAndWindow) {
  ProgramInstance& main = program("INIZIA\nX = 5\npunti = 10\n");
  run_assignments(main);
  ProgramInstance& e = bare_program(true);
  e.instance.x = 1;
  tokenise(e, "INIZIA\nX = 50\npunti = punti + 1\nvite = 3\nlarghezza finestra = 640\n");
  e.var_inizialization(0);
  // The program's names stay out of the element's own table.
  EXPECT_EQ(e.find_variable("punti"), -1);
  EXPECT_EQ(e.find_variable("X"), -1);
  EXPECT_GE(e.find_variable("vite"), 0);
  const int header_end = position(e, "X");
  run_between(e, header_end, e.program.totale_tok);
  EXPECT_EQ(stored(main, "punti"), "11");
  EXPECT_EQ(stored(main, "X"), "50");
  // The attribute moves the element, not main_code_ctrl.
  EXPECT_EQ(e.instance.x, 50);
  EXPECT_EQ(main.instance.x, 5);
  EXPECT_EQ(stored(e, "vite"), "3");
  EXPECT_EQ(stored(main, "vite"), "absent");
  EXPECT_EQ(main.larghezza_finestra, 640);
  EXPECT_EQ(e.larghezza_finestra, 640);
}

TEST_F(VariableTable, LookupsAgreeWithAScanFromTheStart) {
  ProgramInstance& p = bare_program();
  const std::vector<std::string> pool = {"a", "b", "c", "d", "", "gatto"};
  std::mt19937 random(7);
  const auto pick = [&] { return pool[random() % pool.size()]; };
  const auto scan = [&](const std::string& name) {
    for (int k = 0; k < std::min(p.vari_size, static_cast<int>(p.vari.size())); ++k) {
      if (p.vari[static_cast<size_t>(k)].string_view() == name) return k;
    }
    return -1;
  };
  for (int step = 0; step < 3000; ++step) {
    switch (random() % 5) {
      case 0:
      case 1: p.append_variable(pick(), RValue::text(std::to_string(step))); break;
      case 2: p.remove_variable(pick()); break;
      // The table's size runs behind its arrays for a while, as it does while a table is made.
      case 3: p.vari_size = static_cast<int>(random() % (p.vari.size() + 1)); break;
      case 4: p.vari_size = static_cast<int>(p.vari.size()); break;
    }
    for (const std::string& name : pool) ASSERT_EQ(p.find_variable(name), scan(name)) << name << " at " << step;
  }
  // A value stands at the name's first position.
  p.vari_size = static_cast<int>(p.vari.size());
  p.append_variable("zeta", RValue::text("1"));
  p.append_variable("zeta", RValue::text("2"));
  EXPECT_EQ(p.cal_var_and_const("zeta"), "1");
}

TEST_F(VariableTable, FirstValuesAreTriedAtTheStart) {
  // The statement would never run, yet its expression's error shows at once.
  ProgramInstance& p = program(
      "INIZIA\nS = \"1++2\"\nCICLO CONTINUO\nse 0 allora\nX = 1++2\n}\nY = ottieni il seno di (VALORE: 1++2)\n");
  ASSERT_EQ(messages_.size(), 1u);
  EXPECT_EQ(messages_[0], "Errore nell'espressione:\r\n" + RULE + "\r\n\r\n1++2\r\n" + RULE +
                              "\r\n\r\nEsecuzione fallita: impossibile interpretare correttamente il codice!\r\n\r\n"
                              "Ecco le possibili cause:\r\n"
                              "1 - Hai scritto un operatore di troppo ( + , - , * , / , ^ ) \r\n"
                              "2 - Hai scritto troppi spazi bianchi tra i valori oppure sei andato a capo");
  EXPECT_EQ(stored(p, "X"), "0");
  EXPECT_EQ(stored(p, "S"), "0");
  EXPECT_EQ(stored(p, "Y"), "|not_set|");
}

TEST_F(VariableTable, PicturesKeepTheirStoredValue) {
  ProgramInstance& main = program("INIZIA\nfigura = 0\n");
  main.val[static_cast<size_t>(main.find_variable("figura"))] = RValue::number(3);
  const RValue picture = main.calculate_var_image("figura");
  EXPECT_TRUE(picture.is(Kind::Number));
  EXPECT_EQ(picture.real, 3);
  EXPECT_EQ(main.calculate_var("figura"), "3");
  EXPECT_EQ(main.calculate_var_image("nessuna").string_view(), "no var");
}
