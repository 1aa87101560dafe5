// funzioni_sugli_oggetti: the elements of a program and their classes.
// This unit holds the references to elements, the family's table, and the
// functions that find, count, check, move and destroy elements; the
// creation and change of classes and elements stand in
// funzioni_sugli_oggetti_creazione.cpp.
//
// A reference names elements by class, by name or by id. The checks of the
// mouse and the window give 1 on a match and -4 without one.
#include "families/funzioni_sugli_oggetti.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "families/families.h"
#include "families/value_function.h"
#include "language/elements/esemplare.h"
#include "language/evaluation/numeric_expression.h"
#include "language/evaluation/program_instance.h"
#include "runtime/Code/Conversions.h"
#include "runtime/Object/Objects.h"
#include "runtime/Room/Collision.h"
#include "runtime/Room/Room.h"

namespace {

constexpr std::string_view EVERYONE = "tutti";
constexpr double NO_MATCH = -4;

// The reference of argument slot `slot`.
ElementReference reference_in(ProgramInstance& p, int slot) { return element_reference(p, slot_source(p, slot)); }

constexpr int FIRST = 1, SECOND = 2;
// A key not given names nothing.
constexpr std::string_view NOTHING = "***";
constexpr ArgumentKey ELEMENTO[] = {{"(ELEMENTO:", FIRST, NOTHING}};
constexpr ArgumentKey ESEMPLARE[] = {{"(ESEMPLARE:", FIRST, NOTHING}};
constexpr ArgumentKey OGGETTO[] = {{"(OGGETTO:", FIRST, NOTHING}};

// [SECTION] Checks

// 1 when some element that ELEMENTO names satisfies `test`, else -4.
template <class Test>
void check_elements(ProgramInstance& p, int i, Test test) {
  read_arguments(p, i, CallShape::Value, ELEMENTO);
  bool found = false;
  for (const Esemplare* e : named_elements(reference_in(p, FIRST))) found = found || test(*e);
  give_number(p, i, found ? 1 : NO_MATCH, NumberForm::Short);
}

constexpr ArgumentKey CLICK_KEYS[] = {{"(ELEMENTO:", FIRST}, {"(TASTO:", SECOND, "\"sinistro\""}};

void ottieni_risultato_controllo_se_elemento_e_stato_cliccato(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, CLICK_KEYS);
  bool found = false;
  for (const Esemplare* e : named_elements(reference_in(p, FIRST))) {
    found = found || e->stato == "2" || e->stato_d == "2" || e->stato_c == "2";
  }
  give_number(p, i, found ? 1 : NO_MATCH, NumberForm::Short);
}

void ottieni_risultato_controllo_se_elemento_e_cliccato(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, CLICK_KEYS);
  bool found = false;
  for (const Esemplare* e : named_elements(reference_in(p, FIRST))) {
    found = found || e->stato == "1" || e->stato_d == "1" || e->stato_c == "1";
  }
  give_number(p, i, found ? 1 : NO_MATCH, NumberForm::Short);
}

constexpr ArgumentKey BUTTON_KEY[] = {{"(TASTO:", FIRST, "\"sinistro\""}};

void ottieni_ultimo_esemplare_cliccato(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, BUTTON_KEY);
  const std::string button = slot_source(p, FIRST);
  const int index = button == "\"destro\"" ? 1 : button == "\"centrale\"" ? 2 : 0;
  const ProgramInstance* main = main_program();
  give_text(p, i, main ? main->ultimo_click[index] : std::string());
}

void ottieni_risultato_controllo_se_il_mouse_e_entrato_in_questo_elemento(ProgramInstance& p, int i) {
  check_elements(p, i, [](const Esemplare& e) { return e.enter == "1"; });
}
void ottieni_risultato_controllo_se_il_mouse_e_uscito_da_questo_elemento(ProgramInstance& p, int i) {
  check_elements(p, i, [](const Esemplare& e) { return e.enter == "0.5"; });
}
void ottieni_risultato_controllo_se_elemento_ha_toccato_il_bordo_del_finestra(ProgramInstance& p, int i) {
  check_elements(p, i, [](const Esemplare& e) { return e.intersect == "1"; });
}
void ottieni_risultato_controllo_se_elemento_e_uscito_dalla_finestra(ProgramInstance& p, int i) {
  check_elements(p, i, [](const Esemplare& e) { return e.outside == "1"; });
}

void ottieni_risultato_controllo_se_esistono_esemplari_di(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, ELEMENTO);
  give_number(p, i, named_elements(reference_in(p, FIRST)).empty() ? 0 : 1, NumberForm::Short);
}

// [SECTION] Counts and the nearest

void ottieni_numero_esemplari_esistenti_di(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, OGGETTO);
  give_number(p, i, static_cast<double>(elements_of_class(reference_in(p, FIRST)).size()), NumberForm::Short);
}

void ottieni_numero_totale_di_esemplari_esistenti(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, {});
  give_number(p, i, static_cast<double>(running_elements().size()), NumberForm::Short);
}

constexpr int PX = 1, PY = 2, CLASS = 3;
constexpr ArgumentKey POINT_AND_CLASS[] = {{"(X:", PX, "0"}, {"(Y:", PY, "0"}, {"(OGGETTO:", CLASS}};

// The element that OGGETTO names nearest to (X, Y), or farthest from it; null for none.
const Esemplare* nearest(ProgramInstance& p, bool farthest) {
  const double x = slot_number(p, PX), y = slot_number(p, PY);
  const Esemplare* best = nullptr;
  double best_distance = farthest ? -1 : std::numeric_limits<double>::infinity();
  for (const Esemplare* e : named_elements(reference_in(p, CLASS))) {
    const double d = std::hypot(e->x - x, e->y - y);
    if (farthest ? d > best_distance : d < best_distance) {
      best = e;
      best_distance = d;
    }
  }
  return best;
}

void ottieni_nome_dell_esemplare_piu_vicino_a(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, POINT_AND_CLASS);
  const Esemplare* e = nearest(p, false);
  give_number(p, i, e ? e->id : NO_MATCH, NumberForm::Short);
}

void ottieni_nome_dell_esemplare_piu_lontano_da(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, POINT_AND_CLASS);
  const Esemplare* e = nearest(p, true);
  if (e) {
    give_text(p, i, e->nome);
  } else {
    give_number(p, i, NO_MATCH, NumberForm::Short);
  }
}

constexpr ArgumentKey POINT[] = {{"(X:", PX, "0"}, {"(Y:", PY, "0"}};

void ottieni_risultato_controllo_se_ci_sono_elementi_in_questo_punto(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Value, POINT);
  const bool found = position_meeting(static_cast<float>(slot_number(p, PX)), static_cast<float>(slot_number(p, PY)),
                                      object_find("esemplare"));
  give_number(p, i, found ? 1 : 0, NumberForm::Short);
}

// [SECTION] Moving

void trasporta_elemento_al_lato_opposto_quando_esce_dalla_finestra(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, ELEMENTO);
  const Room* room = current_room();
  if (!room) return;
  for (Esemplare* e : named_elements(reference_in(p, FIRST))) {
    if (e->x > room->width) e->x = 0;
    if (e->y > room->height) e->y = 0;
    if (e->x < 0) e->x = static_cast<float>(room->width);
    if (e->y < 0) e->y = static_cast<float>(room->height);
    e->xx = value_to_text(RValue::number(e->x));
    e->yy = value_to_text(RValue::number(e->y));
    e->set(instance_flag::BBOX_DIRTY, true);
  }
}

constexpr int TX = 2, TY = 3, SPEED = 4;
constexpr ArgumentKey TOWARDS[] = {{"(ELEMENTO:", FIRST}, {"(X:", TX, "0"}, {"(Y:", TY, "0"}, {"(VELOCITA:", SPEED, "0"}};

// One step on each axis on its own: the way runs at 45 degrees first.
void muovi_un_elemento_verso_un_punto(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, TOWARDS);
  const double x = slot_number(p, TX), y = slot_number(p, TY);
  const auto step = static_cast<float>(slot_number(p, SPEED));
  for (Esemplare* e : named_elements(reference_in(p, FIRST))) {
    if (e->x < x) e->x += step;
    else if (e->x > x) e->x -= step;
    if (e->y < y) e->y += step;
    else if (e->y > y) e->y -= step;
    e->xx = value_to_text(RValue::number(e->x));
    e->yy = value_to_text(RValue::number(e->y));
    e->set(instance_flag::BBOX_DIRTY, true);
  }
}

// [SECTION] Destroying

void destroy_all(const std::vector<Esemplare*>& elements) {
  for (Esemplare* e : elements) instance_destroy(*e);
}

void distruggi_un_esemplare(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, ESEMPLARE);
  const ElementReference ref = reference_in(p, FIRST);
  // An id names one element; anything else a class, or every element.
  for (Esemplare* e : running_elements()) {
    if (e->id == ref.number) {
      instance_destroy(*e);
      return;
    }
  }
  destroy_all(elements_of_class(ref, true));
}

void distruggi_tutti_gli_esemplari_di(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, OGGETTO);
  destroy_all(elements_of_class(reference_in(p, FIRST), true));
}

void distruggi_elemento_quando_esce_dalla_finestra(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, ELEMENTO);
  for (Esemplare* e : named_elements(reference_in(p, FIRST), true)) e->outside_room_destroy = 1;
}

constexpr int AX = 2, AY = 3, AW = 4, AH = 5;
constexpr ArgumentKey RECTANGLE[] = {{"(ESEMPLARE:", FIRST}, {"(X:", AX, "0"}, {"(Y:", AY, "0"},
                                     {"(BASE:", AW, "0"},    {"(ALTEZZA:", AH, "0"}};

void distruggi_elementi_che_si_trovano_in_quest_area_rettangolare(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, RECTANGLE);
  const double x = slot_number(p, AX), y = slot_number(p, AY), w = slot_number(p, AW), h = slot_number(p, AH);
  std::vector<Esemplare*> inside;
  for (Esemplare* e : elements_of_class(reference_in(p, FIRST), true)) {
    if (e->x >= x && e->x <= x + w && e->y >= y && e->y <= y + h) inside.push_back(e);
  }
  destroy_all(inside);
}

constexpr ArgumentKey CIRCLE[] = {{"(ESEMPLARE:", FIRST}, {"(X:", AX, "0"}, {"(Y:", AY, "0"}, {"(RAGGIO:", AW, "0"}};

void distruggi_elementi_che_si_trovano_in_quest_area_circolare(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, CIRCLE);
  const double x = slot_number(p, AX), y = slot_number(p, AY), r = slot_number(p, AW);
  std::vector<Esemplare*> inside;
  for (Esemplare* e : named_elements(reference_in(p, FIRST), true)) {
    if (std::hypot(e->x - x, e->y - y) <= r) inside.push_back(e);
  }
  destroy_all(inside);
}

void distruggi_elementi_che_si_trovano_in_questo_punto(ProgramInstance& p, int i) {
  read_arguments(p, i, CallShape::Statement, POINT);
  const double x = slot_number(p, PX), y = slot_number(p, PY);
  std::vector<Esemplare*> there;
  for (Esemplare* e : running_elements()) {
    if (e->x == x && e->y == y) there.push_back(e);
  }
  destroy_all(there);
}

constexpr FamilyFunction FUNCTIONS[] = {
    {"crea_un_oggetto", CallShape::Statement, crea_un_oggetto},
    {"crea_un_esemplare", CallShape::Statement, crea_un_esemplare},
    {"modifica_un_elemento", CallShape::Statement, modifica_un_elemento},
    {"ottieni_risultato_controllo_collisione_tra", CallShape::Value, ottieni_risultato_controllo_collisione_tra},
    {"distruggi_questi_elementi_quando_collidono_tra_loro", CallShape::Statement,
     distruggi_questi_elementi_quando_collidono_tra_loro},
    {"distruggi_elemento_quando_collide_con", CallShape::Statement, distruggi_elemento_quando_collide_con},
    {"modifica_elemento_quando_collide_con", CallShape::Statement, modifica_elemento_quando_collide_con},
    {"distruggi_elemento_quando_questa_sua_variabile_locale_equivale_a", CallShape::Statement,
     distruggi_elemento_quando_questa_sua_variabile_locale_equivale_a},
    {"scambia_elemento_quando_questa_sua_variabile_locale_equivale_a", CallShape::Statement,
     scambia_elemento_quando_questa_sua_variabile_locale_equivale_a},
    {"ottieni_risultato_controllo_se_esistono_esemplari_di", CallShape::Value,
     ottieni_risultato_controllo_se_esistono_esemplari_di},
    {"distruggi_elemento_quando_esce_dalla_finestra", CallShape::Statement,
     distruggi_elemento_quando_esce_dalla_finestra},
    {"distruggi_elementi_che_si_trovano_in_quest’area_rettangolare", CallShape::Statement,
     distruggi_elementi_che_si_trovano_in_quest_area_rettangolare},
    {"distruggi_elementi_che_si_trovano_in_quest’area_circolare", CallShape::Statement,
     distruggi_elementi_che_si_trovano_in_quest_area_circolare},
    {"distruggi_un_esemplare", CallShape::Statement, distruggi_un_esemplare},
    {"distruggi_tutti_gli_esemplari_di", CallShape::Statement, distruggi_tutti_gli_esemplari_di},
    {"ottieni_nome_dell'esemplare_più_vicino_a", CallShape::Value, ottieni_nome_dell_esemplare_piu_vicino_a},
    {"ottieni_nome_dell'esemplare_più_lontano_da", CallShape::Value, ottieni_nome_dell_esemplare_piu_lontano_da},
    {"ottieni_numero_esemplari_esistenti_di", CallShape::Value, ottieni_numero_esemplari_esistenti_di},
    {"ottieni_numero_totale_di_esemplari_esistenti", CallShape::Value, ottieni_numero_totale_di_esemplari_esistenti},
    {"ottieni_risultato_controllo_se_elemento_è_stato_cliccato", CallShape::Value,
     ottieni_risultato_controllo_se_elemento_e_stato_cliccato},
    {"ottieni_ultimo_esemplare_cliccato", CallShape::Value, ottieni_ultimo_esemplare_cliccato},
    {"ottieni_risultato_controllo_se_elemento_è_cliccato", CallShape::Value,
     ottieni_risultato_controllo_se_elemento_e_cliccato},
    {"ottieni_risultato_controllo_se_il_mouse_è_entrato_in_questo_elemento", CallShape::Value,
     ottieni_risultato_controllo_se_il_mouse_e_entrato_in_questo_elemento},
    {"ottieni_risultato_controllo_se_il_mouse_è_uscito_da_questo_elemento", CallShape::Value,
     ottieni_risultato_controllo_se_il_mouse_e_uscito_da_questo_elemento},
    {"ottieni_risultato_controllo_se_elemento_ha_toccato_il_bordo_del_finestra", CallShape::Value,
     ottieni_risultato_controllo_se_elemento_ha_toccato_il_bordo_del_finestra},
    {"ottieni_risultato_controllo_se_elemento_è_uscito_dalla_finestra", CallShape::Value,
     ottieni_risultato_controllo_se_elemento_e_uscito_dalla_finestra},
    {"trasporta_elemento_al_lato_opposto_quando_esce_dalla_finestra", CallShape::Statement,
     trasporta_elemento_al_lato_opposto_quando_esce_dalla_finestra},
    {"muovi_un_elemento_verso_un_punto", CallShape::Statement, muovi_un_elemento_verso_un_punto},
    {"distruggi_elementi_che_si_trovano_in_questo_punto", CallShape::Statement,
     distruggi_elementi_che_si_trovano_in_questo_punto},
    {"ottieni_risultato_controllo_se_ci_sono_elementi_in_questo_punto", CallShape::Value,
     ottieni_risultato_controllo_se_ci_sono_elementi_in_questo_punto},
    {"ottieni_distanza_tra_due_elementi", CallShape::Value, ottieni_distanza_tra_due_elementi},
    {"fai_parlare_un_elemento", CallShape::Statement, fai_parlare_un_elemento},
    {"fai_pensare_un_elemento", CallShape::Statement, fai_pensare_un_elemento},
    {"timbra_con_questo_elemento", CallShape::Statement, timbra_con_questo_elemento},
    {"cancella_timbri", CallShape::Statement, cancella_timbri},
};

}  // namespace

LabelledKeys labelled_keys(ProgramInstance& p, int i, std::span<const std::string_view> known,
                           std::span<const std::string_view> skipped) {
  constexpr size_t USER_KEYS = 8;
  LabelledKeys labelled;
  size_t users = 0;
  for (int k = i + 2; k + 1 < p.program.totale_tok && p.token_text(k).starts_with('('); k += 3) {
    std::string label(p.token_text(k));
    std::erase(label, '(');
    std::erase(label, ':');
    const auto has = [&label](std::span<const std::string_view> words) {
      return std::find(words.begin(), words.end(), label) != words.end();
    };
    if (has(skipped) || (!has(known) && users++ >= USER_KEYS)) continue;
    labelled.emplace_back(std::move(label), std::string(p.token_text(k + 1)));
  }
  return labelled;
}

ElementReference element_reference(ProgramInstance& p, const std::string& source) {
  return {without_quotes(source), string_is_real(calculate_string(p, source))};
}

std::vector<Esemplare*> running_elements() {
  std::vector<Esemplare*> elements;
  if (const CObject* object = object_get(object_find("esemplare"))) {
    for (CInstance* e : object->instances) {
      if (e->active()) elements.push_back(static_cast<Esemplare*>(e));
    }
  }
  return elements;
}

bool names_element(const Esemplare& e, const ElementReference& ref) {
  return (!e.ogg.empty() && e.ogg == ref.written) || e.nome == ref.written || e.id == ref.number;
}

std::vector<Esemplare*> named_elements(const ElementReference& ref, bool everyone) {
  std::vector<Esemplare*> named;
  for (Esemplare* e : running_elements()) {
    if ((everyone && ref.written == EVERYONE) || names_element(*e, ref)) named.push_back(e);
  }
  return named;
}

std::vector<Esemplare*> elements_of_class(const ElementReference& ref, bool everyone) {
  std::vector<Esemplare*> named;
  for (Esemplare* e : running_elements()) {
    if ((everyone && ref.written == EVERYONE) || (!e->ogg.empty() && e->ogg == ref.written)) named.push_back(e);
  }
  return named;
}

const Family funzioni_sugli_oggetti{"funzioni_sugli_oggetti", NO_GUARD, NO_GUARD, FUNCTIONS};
