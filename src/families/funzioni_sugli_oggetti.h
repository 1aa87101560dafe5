// funzioni_sugli_oggetti: what the object functions share among their
// units: the elements of the run, and which of them a reference names.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class Esemplare;
class Oggetto;
class ProgramInstance;

// A reference to elements as a program writes it (ELEMENTO, ESEMPLARE,
// OGGETTO): a class, an element's name, or an element's id.
struct ElementReference {
  std::string written;  // the text without its double quotes
  double number = 0;    // the text evaluated as a number: an id
};
ElementReference element_reference(ProgramInstance& p, const std::string& source);

// The elements of the run that take part in events, oldest first.
std::vector<Esemplare*> running_elements();
// Whether `e` is named by `ref`: its class (when it has one), its name or its id.
bool names_element(const Esemplare& e, const ElementReference& ref);
// The elements that `ref` names; every element for the word "tutti" when `everyone` is allowed.
std::vector<Esemplare*> named_elements(const ElementReference& ref, bool everyone = false);
// The elements of the class `ref` only; every element for "tutti" when `everyone` is allowed.
std::vector<Esemplare*> elements_of_class(const ElementReference& ref, bool everyone = false);

// The keys of the statement at `i` as labels (the key without "(" and ":")
// with their values as written, leaving out the labels of `skipped`; of the
// labels that aren't `known`, only the first eight: the user's own keys.
using LabelledKeys = std::vector<std::pair<std::string, std::string>>;
LabelledKeys labelled_keys(ProgramInstance& p, int i, std::span<const std::string_view> known,
                           std::span<const std::string_view> skipped);

// The last living class (oggetto) named `name`, or null.
const Oggetto* class_named(const std::string& name);

// The creation and change of classes and elements (funzioni_sugli_oggetti_creazione.cpp).
void crea_un_oggetto(ProgramInstance& p, int i);
void crea_un_esemplare(ProgramInstance& p, int i);
void modifica_un_elemento(ProgramInstance& p, int i);

// Collisions, distances, an element's variable, balloons and stamps (funzioni_sugli_oggetti_incontri.cpp).
void ottieni_risultato_controllo_collisione_tra(ProgramInstance& p, int i);
void distruggi_questi_elementi_quando_collidono_tra_loro(ProgramInstance& p, int i);
void distruggi_elemento_quando_collide_con(ProgramInstance& p, int i);
void modifica_elemento_quando_collide_con(ProgramInstance& p, int i);
void distruggi_elemento_quando_questa_sua_variabile_locale_equivale_a(ProgramInstance& p, int i);
void scambia_elemento_quando_questa_sua_variabile_locale_equivale_a(ProgramInstance& p, int i);
void ottieni_distanza_tra_due_elementi(ProgramInstance& p, int i);
void fai_parlare_un_elemento(ProgramInstance& p, int i);
void fai_pensare_un_elemento(ProgramInstance& p, int i);
void timbra_con_questo_elemento(ProgramInstance& p, int i);
void cancella_timbri(ProgramInstance& p, int i);
