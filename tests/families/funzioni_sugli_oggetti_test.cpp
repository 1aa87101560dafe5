// funzioni_sugli_oggetti: classes and their defaults, an element's own keys
// and expressions, the variables a change can reach, references by class,
// name and id, the checks that give -4, moving and destroying.
#include "families/funzioni_sugli_oggetti.h"

#include <cmath>

#include "language/elements/element_templates.h"
#include "language/elements/esemplare.h"
#include "language/evaluation/numeric_expression.h"
#include "runtime/Platform/Gpu.h"
#include "runtime/Platform/Window.h"
#include "support/SaveArea.h"
#include "support/program_fixture.h"
#include "support/test_pictures.h"

namespace {

class FunzioniSugliOggetti : public ProgramTest {
 protected:
  void SetUp() override {
    ProgramTest::SetUp();
    define_element_objects([] { return -1; });
    objects_prepare();
  }
  static Esemplare* named(const std::string& nome) {
    for (Esemplare* e : running_elements()) {
      if (e->nome == nome) return e;
    }
    return nullptr;
  }
};

TEST_F(FunzioniSugliOggetti, AnElementTakesItsClassThenItsOwnKeysWorkedOutTogether) {
  ProgramInstance& p = started(
      "crea un oggetto (NOME: \"palla\", X: 300, PUNTI: 1, VITE: 3)\n"
      "crea un esemplare (OGGETTO: \"palla\", NOME: \"p1\")\n"
      "crea un esemplare (OGGETTO: \"palla\", NOME: \"p2\", Y: 40, X: Y + 5, PUNTI: 7)\n"
      "n = ottieni numero esemplari esistenti di (OGGETTO: \"palla\")\n"
      "nessuno = ottieni numero esemplari esistenti di (OGGETTO: \"sasso\")\n"
      "tutti = ottieni numero totale di esemplari esistenti");
  Esemplare* p1 = named("p1");
  Esemplare* p2 = named("p2");
  ASSERT_TRUE(p1 && p2);
  EXPECT_EQ(p1->x, 300) << "no X: the class's";
  EXPECT_EQ(p1->y, 100) << "nor Y in the class: the default";
  EXPECT_EQ(p2->x, 45) << "X written as an expression of Y";
  EXPECT_EQ(p1->image_xscale, 1);
  EXPECT_EQ(p1->image_alpha, 1);
  EXPECT_EQ(p1->immagine, "") << "without a picture of its own or of its class, the elements' picture";
  EXPECT_EQ(p2->ogg, "palla");
  EXPECT_EQ(stored(p2->program(), "PUNTI"), "7") << "the element's own key wins";
  EXPECT_EQ(stored(p2->program(), "VITE"), "3") << "the class's variable";
  EXPECT_EQ(stored(p, "n"), "2");
  EXPECT_EQ(stored(p, "nessuno"), "0");
  EXPECT_EQ(stored(p, "tutti"), "2");
}

TEST_F(FunzioniSugliOggetti, AChangeReachesOnlyVariablesTheElementWasCreatedWith) {
  started(
      "crea un esemplare (OGGETTO: \"palla\", NOME: \"p1\", PUNTI: 1)\n"
      "crea un esemplare (OGGETTO: \"palla\", NOME: \"p2\", PUNTI: 1)");
  frames(2);
  started("modifica un elemento (NOME: \"palla\", PUNTI: 5, VITE: 9, X: 20)");
  for (const char* nome : {"p1", "p2"}) {
    Esemplare* e = named(nome);
    ASSERT_NE(e, nullptr);
    EXPECT_EQ(stored(e->program(), "PUNTI"), "5") << nome;
    EXPECT_EQ(stored(e->program(), "VITE"), "absent") << "not written at creation: no such variable";
    EXPECT_EQ(e->x, 20) << "X moves the element";
  }
}

TEST_F(FunzioniSugliOggetti, ChecksGiveMinusFourWithoutAMatchAndElementsMoveAndGo) {
  ProgramInstance& p = started(
      "crea un esemplare (OGGETTO: \"pesce\", NOME: \"f1\", X: 100, Y: 100)\n"
      "crea un esemplare (OGGETTO: \"pesce\", NOME: \"f2\", X: 1200, Y: -5)\n"
      "dentro = ottieni risultato controllo se il mouse è entrato in questo elemento (ELEMENTO: \"pesce\")\n"
      "vicino = ottieni nome dell'esemplare più vicino a (X: 0, Y: 0, OGGETTO: \"pesce\")\n"
      "lontano = ottieni nome dell'esemplare più lontano da (X: 0, Y: 0, OGGETTO: \"pesce\")\n"
      "nessuno = ottieni nome dell'esemplare più vicino a (X: 0, Y: 0, OGGETTO: \"sasso\")\n"
      "esiste = ottieni risultato controllo se esistono esemplari di (ELEMENTO: \"f1\")\n"
      "muovi un elemento verso un punto (ELEMENTO: \"f1\", X: 200, Y: 130, VELOCITA: 10)\n"
      "muovi un elemento verso un punto (ELEMENTO: \"f1\", X: 0, Y: 0, VELOCITA: 0)\n"
      "trasporta elemento al lato opposto quando esce dalla finestra (ELEMENTO: \"f2\")");
  EXPECT_EQ(stored(p, "dentro"), "-4");
  EXPECT_EQ(stored(p, "vicino"), std::to_string(named("f1")->id)) << "the nearest gives its id";
  EXPECT_EQ(stored(p, "lontano"), "f2") << "the farthest gives its name";
  EXPECT_EQ(stored(p, "nessuno"), "-4");
  EXPECT_EQ(stored(p, "esiste"), "1");
  EXPECT_EQ(named("f1")->x, 110) << "one step on each axis";
  EXPECT_EQ(named("f1")->y, 110);
  EXPECT_EQ(named("f2")->x, 0) << "beyond the right edge, back to the left";
  EXPECT_EQ(named("f2")->y, ROOM_HEIGHT) << "above the top, to the bottom";
  started("distruggi tutti gli esemplari di (OGGETTO: tutti)");
  frames(1);
  EXPECT_TRUE(running_elements().empty());
}

// Collisions are looked for on odd frames only, through markers in the elements' shapes.
TEST_F(FunzioniSugliOggetti, CollidingElementsGoOnOddFramesOnly) {
  ASSERT_TRUE(platform::make_window(true).create(ROOM_WIDTH, ROOM_HEIGHT, "test", {}));
  ASSERT_TRUE(platform::gpu().ready());
  SaveArea area;
  struct White {
    int r = 255, g = 255, b = 255;
  };
  ASSERT_TRUE(write_test_picture(area.path() / "quadrato.png", 20, 20, [](int, int) { return White{}; }));
  started(
      "crea un oggetto (NOME: \"blocco\", IMMAGINE: \"quadrato\")\n"
      "crea un esemplare (OGGETTO: \"blocco\", NOME: \"a\", X: 100, Y: 100)\n"
      "crea un esemplare (OGGETTO: \"blocco\", NOME: \"b\", X: 110, Y: 100)\n"
      "crea un esemplare (OGGETTO: \"blocco\", NOME: \"c\", X: 400, Y: 100)");
  for (Esemplare* e : running_elements()) e->sprite_index = static_cast<int32_t>(string_is_real(e->immagine));
  ProgramInstance& rule = runnable(
      "INIZIA\ndistruggi questi elementi quando collidono tra loro (ELEMENTO_1: \"a\", ELEMENTO_2: \"b\")\nCICLO CONTINUO\n");
  rule.time = 2;
  run_inizia(rule);
  frames(1);
  EXPECT_EQ(running_elements().size(), 3u) << "an even frame looks for nothing";
  rule.time = 3;
  run_inizia(rule);
  frames(1);
  ASSERT_EQ(running_elements().size(), 1u);
  EXPECT_EQ(running_elements()[0]->nome, "c");
  EXPECT_EQ(first_active_instance(object_find("puntatore1")), nullptr) << "the markers go with the statement";

  started("crea un esemplare (OGGETTO: \"blocco\", NOME: \"d\", X: 410, Y: 100)");
  for (Esemplare* e : running_elements()) e->sprite_index = static_cast<int32_t>(string_is_real(e->immagine));
  // A name that ends in "con" takes no arrow of its own: the palette writes it.
  ProgramInstance& change = runnable(
      "INIZIA\nmodifica elemento quando collide con --> (ELEMENTO: \"c\", ELEMENTO_COINVOLTO: \"d\", X: 700, Y: X + 5)\n"
      "CICLO CONTINUO\n");
  change.time = 5;
  run_inizia(change);
  EXPECT_EQ(named("c")->x, 700) << "the first of the two that collide changes";
  EXPECT_EQ(named("c")->y, 705) << "Y written as an expression of the X given";
  EXPECT_EQ(named("d")->x, 410);

  // c stands at (700, 705), d at (410, 100): their squares are 270 pixels apart across and 585 down.
  // The exchange has no phrase of the keyword table: it is written with its underscores.
  ProgramInstance& look = started(
      "distanza = ottieni distanza tra due elementi (ELEMENTO_1: \"c\", ELEMENTO_2: \"d\")\n"
      "su_d = ottieni risultato controllo se ci sono elementi in questo punto (X: 415, Y: 105)\n"
      "nel_vuoto = ottieni risultato controllo se ci sono elementi in questo punto\n"
      "crea un oggetto (NOME: \"sasso\", SCALA_ASSE_X: 3, PUNTI: 9)\n"
      "scambia_elemento_quando_questa_sua_variabile_locale_equivale_a (ELEMENTO: \"d\", VARIABILE: X, VALORE: 410, "
      "OGGETTO: \"sasso\")");
  EXPECT_NEAR(string_is_real(stored(look, "distanza")), std::hypot(700 - 430, 705 - 120), 2);
  EXPECT_EQ(stored(look, "su_d"), "1");
  EXPECT_EQ(stored(look, "nel_vuoto"), "0");
  EXPECT_EQ(named("d"), nullptr) << "d gave way";
  bool sasso = false;
  for (Esemplare* e : running_elements()) {
    if (e->ogg != "sasso") continue;
    sasso = true;
    EXPECT_EQ(e->x, 410) << "at d's place";
    EXPECT_EQ(e->image_xscale, 3) << "with the class's fields";
    EXPECT_EQ(stored(e->program(), "PUNTI"), "9");
  }
  EXPECT_TRUE(sasso);
}

// The destroys by area, circle, point and variable, and the exchange for another class.
TEST_F(FunzioniSugliOggetti, AreasPointsAndVariablesChooseWhatGoes) {
  struct Case {
    const char* statement;
    std::vector<std::string> left;
  };
  const Case cases[] = {
      {"distruggi elementi che si trovano in quest’area rettangolare (ESEMPLARE: \"pesce\", X: 50, Y: 50, BASE: 100, "
       "ALTEZZA: 100)",
       {"b", "c"}},
      {"distruggi elementi che si trovano in quest’area circolare (ESEMPLARE: tutti, X: 300, Y: 300, RAGGIO: 10)",
       {"a", "c"}},
      {"distruggi elementi che si trovano in questo punto (X: 600, Y: 100)", {"a", "b"}},
      {"distruggi elemento quando questa sua variabile locale equivale a (ELEMENTO: \"pesce\", VARIABILE: PUNTI, "
       "VALORE: 2)",
       {"a", "c"}},
  };
  for (const Case& c : cases) {
    started(
        "crea un esemplare (OGGETTO: \"pesce\", NOME: \"a\", X: 100, Y: 100, PUNTI: 1)\n"
        "crea un esemplare (OGGETTO: \"pesce\", NOME: \"b\", X: 300, Y: 300, PUNTI: 2)\n"
        "crea un esemplare (OGGETTO: \"sasso\", NOME: \"c\", X: 600, Y: 100, PUNTI: 3)");
    started(c.statement);
    frames(1);
    std::vector<std::string> left;
    for (const Esemplare* e : running_elements()) left.push_back(e->nome);
    EXPECT_EQ(left, c.left) << c.statement;
    started("distruggi tutti gli esemplari di (OGGETTO: tutti)");
    frames(1);
  }
}

}  // namespace
