// funzioni_sugli_oggetti: what the object functions share among their
// units: the elements of the run, and which of them a reference names.
#pragma once

#include <string>
#include <vector>

class Esemplare;
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

// The creation and change of classes and elements (funzioni_sugli_oggetti_creazione.cpp).
void crea_un_oggetto(ProgramInstance& p, int i);
void crea_un_esemplare(ProgramInstance& p, int i);
void modifica_un_elemento(ProgramInstance& p, int i);
