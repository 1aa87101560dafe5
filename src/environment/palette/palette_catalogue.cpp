#include "environment/palette/palette_catalogue.h"

#include <array>

namespace {

std::string repeated_blank(int n) { return std::string(static_cast<size_t>(n), ' '); }

// The functions of each category, as the panel lists them; where a form is
// null the label itself is what goes in (those calls need their keys typed).
// 0: Disegno geometrico
constexpr FunctionEntry CATEGORY_0[] = {
    {"disegna cerchio", "disegna cerchio --> "},
    {"disegna rettangolo", "disegna rettangolo --> "},
    {"disegna triangolo", "disegna triangolo --> "},
    {"disegna linea", "disegna linea --> "},
    {"disegna punto", "disegna punto --> "},
    {"disegna ellisse", "disegna ellisse --> "},
    {"disegna poligono regolare", "disegna poligono regolare --> "},
    {"disegna righelli", nullptr},
    {"disegna goniometro", nullptr},
};
// 1: Immagini
constexpr FunctionEntry CATEGORY_1[] = {
    {"ottieni immagine (carica immagine)", "foto = ottieni immagine --> (NOME:)"},
    {"disegna immagine", "disegna immagine --> (IMMAGINE:) "},
    {"ottieni immagine animata (carica immagine)", "animazione = ottieni immagine --> (NOME: ) (FOTOGRAMMI: )"},
    {"disegna immagine animata", "disegna immagine --> (NOME: ) (VELOCITA ANIMAZIONE: )"},
    {"disegna fotogramma", "disegna fotogramma --> (IMMAGINE: ) (FOTOGRAMMA: )"},
    {"elimina immagine", "elimina immagine --> (NOME: foto)"},
    {"timbra con questo elemento", nullptr},
    {"cancella timbri", nullptr},
    {"disegna pixel art", "disegna pixel art --> (DISEGNO: ) "},
};
// 2: Colore
constexpr FunctionEntry CATEGORY_2[] = {
    {"ottieni colore rgb (rosso, verde, blu)", "colore_personalizzato = ottieni colore rgb --> "},
    {"ottieni colore hsv (tinta, saturazione, luminosità)", "colore_personalizzato = ottieni colore rgb --> "},
    {"ottieni miscela colori (mischia due colori insieme)", "colore_personalizzato = ottieni miscela colori da --> "},
    {"ottieni colore di questo pixel", nullptr},
};
// 3: Scrittura
constexpr FunctionEntry CATEGORY_3[] = {
    {"disegna testo", "disegna testo --> "},
    {"ottieni stile testo", "stile_testo = ottieni stile testo --> "},
    {"fai parlare un elemento", nullptr},
    {"fai pensare un elemento ", nullptr},
};
// 4: Effetti speciali
constexpr FunctionEntry CATEGORY_4[] = {
    {"disegna effetto speciale animato predefinito", nullptr},
    {"ottieni particella", nullptr},
    {"disegna direttamente delle particelle", nullptr},
    {"ottieni generatore di particelle", nullptr},
    {"attiva generatore di particelle", nullptr},
    {"attiva generatore di particelle solo per un istante", nullptr},
    {"disegna effetto speciale su un elemento quando viene creato", nullptr},
    {"disegna effetto speciale su un elemento", nullptr},
    {"disegna effetto speciale su un elemento quando viene distrutto", nullptr},
};
// 5: Matematica base
constexpr FunctionEntry CATEGORY_5[] = {
    {"ottieni il massimo tra", "variabile = ottieni il massimo tra  --> (VALORE 1: ) (VALORE 2: )"},
    {"ottieni il minimo tra", "variabile = ottieni il minimo tra  --> (VALORE 1: ) (VALORE 2: )"},
    {"ottieni la media tra", "variabile = ottieni la media tra --> (VALORE 1: ) (VALORE 2: )"},
    {"ottieni il valore più vicino alla media tra", "variabile = ottieni il valore più vicino alla media tra --> (VALORE 1: ) (VALORE 2: )"},
    {"ottieni l'arrotondamento per difetto di", "variabile = ottieni l'arrotondamento per difetto di --> (VALORE: )"},
    {"ottieni l'arrotondamento per eccesso di", "variabile = ottieni l'arrotondamento per eccesso di --> (VALORE: )"},
    {"ottieni il quoziente della divisione tra", "variabile = ottieni il quoziente della divisione tra  --> (VALORE 1: ) (VALORE 2: )"},
    {"ottieni il resto della divisione tra", "variabile = ottieni il resto della divisione tra --> (DIVIDENDO: ) (DIVISORE: )"},
    {"ottieni il valore intero di", "variabile = ottieni il valore intero di --> (VALORE: )"},
    {"ottieni il valore decimale di", "variabile = ottieni il valore decimale di --> (VALORE: )"},
};
// 6: Matematica
constexpr FunctionEntry CATEGORY_6[] = {
    {"ottieni la radice quadrata di", "variabile = ottieni la radice quadrata di --> (VALORE: )"},
    {"ottieni distanza tra due punti", "variabile = ottieni distanza tra due punti --> (X 1: ) (Y 1: ) (X 2: ) (Y 2: )"},
    {"ottieni direzione tra due punti", nullptr},
    {"ottieni il valore assoluto di", "variabile = ottieni il valore assoluto di --> (VALORE: )"},
    {"ottieni il segno di", "variabile = ottieni il segno di  --> (VALORE: )"},
    {"ottieni l'interpolazione lineare tra", "variabile = ottieni l'interpolazione lineare tra --> (DIVIDENDO: ) (DIVISORE: )"},
    {"ottieni il valore limitato della variabile tra", "variabile = ottieni il valore limitato della variabile tra --> (VALORE 1: ) (VALORE 2: ) (VARIABILE:)"},
    {"ottieni la funzione esponenziale di", "variabile = ottieni la funzione esponenziale di --> (VALORE:)"},
    {"ottieni il logaritmo naturale di ", nullptr},
    {"ottieni il logaritmo in base 2 di", "variabile = ottieni il logaritmo in base 2 di --> (VALORE: )"},
    {"ottieni il logaritmo in base 10 di", "variabile = ottieni il logaritmo in base 10 di --> (VALORE: )"},
    {"ottieni il logaritmo in base n di", "variabile = ottieni il logaritmo in base n di --> (VALORE: ) (BASE: )"},
};
// 7: Casualità
constexpr FunctionEntry CATEGORY_7[] = {
    {"ottieni uno a caso di questi valori", "variabile = ottieni uno a caso di questi valori --> (VALORE 1: ) (VALORE 2: )"},
    {"ottieni un valore compreso tra questi", "variabile = ottieni un valore compreso tra questi --> (VALORE 1: ) (VALORE 2: )"},
    {"ottieni un valore intero compreso tra questi", "variabile = ottieni un valore intero compreso tra questi --> (VALORE 1: ) (VALORE 2: )"},
    {"attiva casualità diversa per ogni avvio", "attiva casualità diversa per ogni avvio"},
};
// 8: Trigonometria
constexpr FunctionEntry CATEGORY_8[] = {
    {"ottieni il seno di", "variabile = ottieni il seno di --> (VALORE: )"},
    {"ottieni il coseno di", "variabile = ottieni il coseno di --> (VALORE: )"},
    {"ottieni la tangente di", "variabile = ottieni la tangente di  --> (VALORE: )"},
    {"ottieni l'arcoseno di", "variabile = ottieni l'arcoseno di --> (VALORE:)"},
    {"ottieni l'arcotangente di", "variabile = ottieni l'arcotangente di --> (VALORE:)"},
    {"ottieni l'arcotangente 2 di", "variabile = ottieni l'arcotangente 2 di --> (VALORE:)"},
    {"ottieni il valore convertito da radianti a gradi di", "variabile = ottieni il valore convertito da radianti a gradi di --> (VALORE:)"},
    {"ottieni il valore convertito da gradi a radianti di", "variabile = ottieni il valore convertito da gradi a radianti di --> (VALORE:)"},
    {"ottieni la componente x del vettore dato angolo e lunghezza", "variabile = ottieni la componente x del vettore dato angolo e lunghezza --> (LUNGHEZZA: )(ANGOLO: )"},
    {"ottieni la componente y del vettore dato angolo e lunghezza", "variabile = ottieni la componente y del vettore dato angolo e lunghezza --> (LUNGHEZZA: )(ANGOLO: )"},
    {"ottieni differenza angolare tra", "variabile = ottieni differenza angolare tra --> (VALORE 1: ) (VALORE 2: )"},
};
// 9: Oggetti
constexpr FunctionEntry CATEGORY_9[] = {
    {"crea un oggetto", "crea un oggetto --> (NOME: )"},
    {"crea un esemplare", "crea un esemplare --> (NOME: )"},
    {"modifica un elemento", "modifica un elemento --> (NOME: )"},
    {"controllo collisione tra", "variabile = ottieni risultato controllo collisione tra --> (ELEMENTO 1: ) (ELEMENTO 2: )"},
    {"controllo se esistono esemplari di", "variabile = ottieni risultato controllo se esistono esemplari di"},
    {"distruggi un esemplare", "distruggi un esemplare -->  (ESEMPLARE :)"},
    {"distruggi tutti gli esemplari di", nullptr},
    {"controllo se elemento è stato cliccato", "variabile = ottieni risultato controllo se elemento è stato cliccato"},
    {"controllo se elemento è cliccato", "variabile = ottieni risultato controllo se elemento è cliccato"},
    {"controllo se elemento tocca bordo finestra", "variabile = ottieni risultato controllo se elemento ha toccato il bordo della finestra"},
};
// 10: Ogggetti (avanzate)
constexpr FunctionEntry CATEGORY_10[] = {
    {"ottieni ultimo esemplare cliccato", nullptr},
    {"distruggi questi elementi quando collidono tra loro", nullptr},
    {"distruggi elemento quando collide con", nullptr},
    {"distruggi elemento quando questa sua variabile locale equivale a", nullptr},
    {"distruggi elemento quando esce dalla finestra", nullptr},
    {"distruggi elementi che si trovano in quest'area rettangolare", nullptr},
    {"distruggi elementi che si trovano in quest'area circolare", nullptr},
    {"muovi un elemento verso un punto", nullptr},
    {"ottieni distanza tra due elementi", "distanza = ottieni distanza tra due elementi --> (ELEMENTO 1: ) (ELEMENTO 2: )"},
    {"controllo se ci sono elementi in questo punto", "variabile = ottieni risultato controllo se ci sono elementi in questo punto"},
    {"ottieni nome esemplare più vicino a", nullptr},
    {"ottieni nome esemplare più lontano da", nullptr},
};
// 11: Percorsi
constexpr FunctionEntry CATEGORY_11[] = {
    {"ottieni un percorso", "percorso = ottieni un percorso --> (COORDINATE: )"},
    {"assegna un percorso da seguire a un elemento", nullptr},
    {"ferma movimento di un elemento", "ferma movimento di un elemento --> (ELEMENTO:)"},
    {"ottieni velocità percorrenza percorso", "ottieni velocità percorrenza percorso --> (ELEMENTO:)"},
    {"imposta velocità percorrenza percorso", "imposta velocità percorrenza percorso --> (ELEMENTO:) (VELOCITA:)"},
};
// 12: Tabelle
constexpr FunctionEntry CATEGORY_12[] = {
    {"crea tabella", "crea tabella --> (NOME: )"},
    {"modifica tabella", "modifica tabella --> (NOME: )"},
    {"ottieni dato da tabella", "variabile = ottieni dato da tabella --> (NOME: ) (RIGA: ) (COLONNA: )"},
    {"riempi tabella", "riempi tabella --> (NOME: ) (COLONNA 1: )"},
    {"distruggi tabella", "distruggi tabella --> (NOME: )"},
    {"disegna tabella", "disegna tabella --> (NOME: )"},
    {"esporta tabella", "esporta tabella --> (NOME: )"},
    {"importa tabella", "importa tabella --> (NOME: ) (PERCORSO: )"},
};
// 13: Arduino
constexpr FunctionEntry CATEGORY_13[] = {
    {"ottieni connessione con Arduino", "Arduino = ottieni connessione con Arduino --> (PORTA: \"COM1\")"},
    {"invia testo ad Arduino", "invia testo ad Arduino --> (TESTO: )"},
    {"ottieni testo da Arduino", "testo = ottieni testo da Arduino"},
};
// 14: Varie
constexpr FunctionEntry CATEGORY_14[] = {
    {"imposta griglia", nullptr},
    {"imposta schermo intero", nullptr},
    {"salva schermata", nullptr},
    {"crea gif animata", "crea gif animata --> (NOME: )"},
    {"esci dal programma", nullptr},
    {"riavvia il programma", nullptr},
    {"copia negli appunti", "copia negli appunti --> (TESTO: )"},
    {"ottieni testo dagli appunti", "testo = ottieni testo dagli appunti"},
    {"ottieni risultato controllo se c'è testo negli appunti", "variabile = ottieni risultato controllo se c'è testo negli appunti"},
};
// 15: Suono
constexpr FunctionEntry CATEGORY_15[] = {
    {"suona", "suona --> "},
    {"interrompi tutti i suoni", "interrompi tutti i suoni"},
    {"ottieni volume principale", "volume = ottieni volume principale"},
    {"ottieni volume microfono", nullptr},
};
// 16: Suono (avanzate)
constexpr FunctionEntry CATEGORY_16[] = {
    {"suona audio dinamico", nullptr},
    {"modifica audio dinamico", nullptr},
    {"ottieni risultato controllo se sta suonando", "sta_suonando = ottieni risultato controllo se sta suonando --> "},
    {"metti in pausa questo suono", nullptr},
    {"riprendi a suonare questo suono", nullptr},
    {"ottieni risultato controllo se questo suono è in pausa", nullptr},
    {"ottieni posizione attuale traccia del suono", nullptr},
    {"ottieni lunghezza traccia del suono", nullptr},
    {"modifica posizione ascoltatore", nullptr},
};
// 17: Melodie
constexpr FunctionEntry CATEGORY_17[] = {
    {"suona melodia", "suona melodia --> "},
};
// 18: Tasti virtuali
constexpr FunctionEntry CATEGORY_18[] = {
    {"crea tasto virtuale", "crea tasto virtuale --> "},
    {"crea classe di tasti", "crea classe di tasti --> "},
    {"distruggi interfaccia", "distruggi interfaccia --> (NOME: )"},
};
// 19: Opzioni
constexpr FunctionEntry CATEGORY_19[] = {
    {"crea interruttore", "crea interruttore --> "},
    {"crea casella di spunta", "crea casella di spunta --> "},
    {"crea gruppo di opzioni", "crea gruppo di opzioni --> "},
    {"distruggi interfaccia", "distruggi interfaccia --> (NOME: )"},
};
// 20: Barre di controllo
constexpr FunctionEntry CATEGORY_20[] = {
    {"crea barra di controllo orizzontale", "crea barra di controllo orizzontale --> "},
    {"crea barra di controllo verticale", "crea barra di controllo verticale --> "},
    {"distruggi interfaccia", "distruggi interfaccia --> (NOME: )"},
};
// 21: Caselle di testo
constexpr FunctionEntry CATEGORY_21[] = {
    {"crea casella di testo", "crea casella di testo--> "},
    {"crea casella di testo multilinea", "crea casella di testo multilinea --> "},
    {"imposta testo in una casella di testo", nullptr},
    {"distruggi interfaccia", "distruggi interfaccia --> (NOME: )"},
};
// 22: Analisi testo
constexpr FunctionEntry CATEGORY_22[] = {
    {"ottieni il simbolo di un testo a una determinata posizione", "lettera = ottieni il simbolo di un testo a una determinata posizione --> "},
    {"ottieni il numero di parole specificate in un testo", nullptr},
    {"ottieni un pezzo di questo testo", nullptr},
    {"ottieni posizione parola", nullptr},
};
// 23: Modifica testo
constexpr FunctionEntry CATEGORY_23[] = {
    {"ottieni numero da testo", "numero = ottieni numero da testo --> "},
    {"ottieni testo con parola sostituita", "testo = ottieni testo con parola sostituita --> "},
    {"ottieni testo con parola sostituita solo la prima volta", "testo = ottieni testo con parola sostituita solo la prima volta --> "},
    {"ottieni testo con inserito altro testo a una determinata posizione", nullptr},
    {"ottieni testo maiuscolo", nullptr},
    {"ottieni testo minuscolo", nullptr},
};
// 24: Crittografia
constexpr FunctionEntry CATEGORY_24[] = {
    {"ottieni testo cifrato", nullptr},
    {"ottieni testo decifrato", nullptr},
};
// 25: File di testo
constexpr FunctionEntry CATEGORY_25[] = {
    {"scrivi su questo file", nullptr},
    {"scrivi una nuova linea su questo file", nullptr},
    {"sovrascrivi su questo file", nullptr},
    {"ottieni testo da questo file", nullptr},
    {"ottieni una riga di testo da questo file", nullptr},
};
// 26: Date e orari
constexpr FunctionEntry CATEGORY_26[] = {
    {"ottieni data attuale", nullptr},
    {"ottieni data attuale come testo", nullptr},
    {"ottieni giorno attuale", nullptr},
    {"ottieni nome del giorno attuale", nullptr},
    {"ottieni mese attuale", nullptr},
    {"ottieni nome del mese attuale", nullptr},
    {"ottieni anno attuale", nullptr},
    {"ottieni una data", nullptr},
    {"ottieni risultato controllo se la data è oggi", nullptr},
    {"ottieni elemento da questa data", nullptr},
    {"ottieni risultato confronto date", nullptr},
    {"ottieni differenza tra due date", nullptr},
};

constexpr std::span<const FunctionEntry> CATEGORIES[FUNCTION_CATEGORIES] = {
    CATEGORY_0,  CATEGORY_1,  CATEGORY_2,  CATEGORY_3,  CATEGORY_4,  CATEGORY_5,  CATEGORY_6,
    CATEGORY_7,  CATEGORY_8,  CATEGORY_9,  CATEGORY_10, CATEGORY_11, CATEGORY_12, CATEGORY_13,
    CATEGORY_14, CATEGORY_15, CATEGORY_16, CATEGORY_17, CATEGORY_18, CATEGORY_19, CATEGORY_20,
    CATEGORY_21, CATEGORY_22, CATEGORY_23, CATEGORY_24, CATEGORY_25, CATEGORY_26};

constexpr const char* CATEGORY_NAMES[FUNCTION_CATEGORIES] = {
    "Disegno geometrico", "Immagini", "Colore", "Scrittura", "Effetti speciali", "Matematica base",
    "Matematica", "Casualità", "Trigonometria", "Oggetti", "Ogggetti (avanzate)", "Percorsi", "Tabelle",
    "Arduino", "Varie", "Suono", "Suono (avanzate)", "Melodie", "Tasti virtuali", "Opzioni",
    "Barre di controllo", "Caselle di testo", "Analisi testo", "Modifica testo", "Crittografia",
    "File di testo", "Date e orari"};

// Drawing, mathematics, widgets, sound, text, and objects with the other tools.
constexpr CategoryRange GROUPS[FUNCTION_GROUPS] = {{0, 4}, {5, 8}, {18, 21}, {15, 17}, {22, 26}, {9, 14}};
constexpr const char* GROUP_NAMES[FUNCTION_GROUPS] = {"Disegno", "Matematica", "Interfaccia",
                                                      "Suono",   "Testo",      "Oggetti e altro"};

constexpr NamedColour COLOURS[] = {
    {"rosso", 255, 0, 0},          {"rosso vermiglione", 227, 66, 52}, {"corallo", 255, 127, 80},
    {"arancione", 255, 160, 64},   {"oro", 255, 215, 0},               {"giallo", 255, 255, 0},
    {"castagno", 205, 92, 92},     {"castagno scuro", 152, 105, 96},   {"rosa", 255, 192, 203},
    {"bronzo", 205, 127, 50},      {"verde oliva", 128, 128, 0},       {"verde", 0, 255, 0},
    {"marrone", 128, 0, 0},        {"rosa vivo", 255, 0, 127},         {"malva", 224, 176, 255},
    {"blu ardesia", 112, 152, 192}, {"verde acqua", 0, 128, 128},      {"giada", 0, 168, 107},
    {"magenta", 255, 0, 255},      {"viola", 143, 0, 255},             {"blu", 0, 0, 255},
    {"azzurro", 0, 127, 255},      {"ciano", 0, 255, 255},             {"verde scuro", 0, 128, 0},
    {"bianco", 255, 255, 255},     {"argento", 220, 220, 220},         {"grigio chiaro", 192, 192, 192},
    {"grigio", 128, 128, 128},     {"grigio scuro", 64, 64, 64},       {"nero", 0, 0, 0}};

constexpr PianoNote NOTES[] = {
    {"Do", 1, false, 0},
    {"Re", 1.122137404580153, false, 88},
    {"Mi", 1.259541984732824, false, 176},
    {"Fa", 1.33587786259542, false, 264},
    {"Sol", 1.49618320610687, false, 352},
    {"La", 1.679389312977099, false, 440},
    {"Si", 1.885496183206107, false, 528},
    {"Do diesis", 1.061068702290076, true, 53.125},
    {"Re diesis", 1.190839694656489, true, 144.125},
    {"Fa diesis", 1.412213740458015, true, 320.125},
    {"Sol diesis", 1.587786259541985, true, 408.125},
    {"La diesis", 1.778625954198473, true, 496.125}};

constexpr const char* SOUNDS[] = {"suono beep1", "suono beep2",  "suono beep3",      "suono bau",
                                  "suono miao",  "suono squit",  "suono hiho",       "suono hiii",
                                  "suono driiin", "suono quack", "suono ok",         "suono errore",
                                  "suono muu",   "suono huahah", "suono nota piano", "altro suono..."};

constexpr const char* FONTS[] = {"Comic Sans", "Brush Script", "Chiller", "Gigi",  "Old English Text",
                                 "Tahoma",     "Times new Roman", "Verdana", "Arial", "Bauhaus 93"};

constexpr const char* VARIABLES[] = {
    "x del mouse",          "y del mouse",        "larghezza finestra",       "altezza finestra",
    "colore sfondo",        "nome finestra",      "tasto Q è stato premuto",  "tasto Q è stato rilasciato",
    "tasto Q è premuto",    "rotella del mouse in su", "rotella del mouse in giu", "x casuale",
    "y casuale",            "angolo casuale",     "colore casuale",           "altra variabile..."};

constexpr SymbolKey SYMBOLS[] = {
    {"(", "Aperta parentesi tonda"},
    {")", "Chiusa parentesi tonda"},
    {"{", "Aperta parentesi graffa"},
    {"}", "Chiusa parentesi graffa"},
    {":", "Due punti"},
    {"=", "Uguale a"},
    {"-->", "Esegui funzione usando questi argomenti\r\n(Esegui comando usando queste caratterisitiche)"},
    {">", "Maggiore di"},
    {"<", "Minore di"},
    {"*", "Per (moltiplicazione)"},
    {"/", "Fratto, diviso (divisione, frazione)"},
    {"+", "Più (addizione)"},
    {"-", "Meno (sottrazione)"},
    {"_", "Trattino basso (underscore)"},
    {"e", "Operatore logico 'e' (and, &&)"},
    {"o", "Operatore logico 'o' (or, ||)"},
    {"o esclusivamente", "Operatore logico 'o esclusivamente' (xor, ^^)"},
    {">=", "Maggiore o uguale a"},
    {"<=", "Minore o uguale a"},
    {"!=", "Diverso da, non ugaule a"},
    {"\"", "Virgolette"}};

constexpr ReadyKit KITS[] = {
    {"Tutorial", "gioco_direzioni.txt"},
    {"Calcolo area rettangolo", "area_rettangolo.txt"},
    {"Frazioni", "frazioni.txt"},
    {"Grafico", "grafico.txt"},
    {"Goniometro", "goniometro.txt"},
    {"Effetto pulsante", "effetto_pulsante.txt"},
    {"Operatori logici", "operatori_logici.txt"},
    {"Grafica con \"Finche\"", "grafica_con_finche.txt"},
    {"Trova il giorno", "trova_giorno.txt"},
    {"Melodia Fra Martino", "fra_martino.txt"},
    {"Gioco click a tempo", "gioco_click_tempo.txt"},
    {"Gioco delle foglie", "gioco_foglie.txt"},
    {"Gioco inseguimento", "gioco_inseguimento.txt"},
    {"Gioco automobile", "gioco_automobile.txt"},
    {"Colore RGB", "colore_rgb.txt"},
    {"Colore HSV", "colore_hsv.txt"},
    {"Crittografia", "crittografia.txt"}};

constexpr DirectionMove MOVES[] = {
    {"cambia colore del corpo del personaggio --> (COLORE: azzurro)\n", 1050, 130, -1},
    {"cambia colore degli occhi del personaggio --> (COLORE: giallo)\n", 1050, 255, -1},
    {"muovi a destra --> (CASELLE: 1)\n", 1150, 500, 0},
    {"muovi in basso --> (CASELLE: 1)\n", 1050, 600, 1},
    {"muovi a sinistra --> (CASELLE: 1)\n", 950, 500, 2},
    {"muovi in alto --> (CASELLE: 1)\n", 1050, 400, 3}};

}  // namespace

const std::string& costrutto_text(Costrutto construct) {
  // The skeleton: six lines, the section names padded with blanks as the learner's template has them.
  static const std::array<std::string, 6> TEXTS = {
      "INIZIA" + repeated_blank(69) + "\r\n//inserisci qui il codice da eseguire una sola volta all'inizio\r\n" +
          repeated_blank(69) + "\r\nCICLO CONTINUO" + repeated_blank(69) +
          "\r\n//inserisci qui il codice da eseguire in continuazione\r\n" + repeated_blank(70) + "\r\n",
      "aumenta nome_della_variabile di 10 ",
      "diminuisci nome_della_variabile di 10 ",
      "\r\ni=0\r\nripeti per 10 volte\r\n{\r\n//inserisci qui il codice da ripetere\r\n\r\n\r\n"
      "//puoi utilizzare la variabile 'i' come contatore\r\naumenta i di 1\r\n}\r\n",
      "\r\nripeti finche x<10\r\n{\r\n//inserisci qui il codice da ripetere finche la condizione (esempio: x<10) "
      "è vera\r\n\r\n\r\n}\r\n",
      "\r\nse x=10\r\n{\r\n//inserisci qui il codice da eseguire se la condizione (esempio: x=10) è vera\r\n\r\n\r\n}"
      "\r\n"};
  return TEXTS[static_cast<size_t>(construct)];
}

std::span<const FunctionEntry> category_functions(int category) {
  if (category < 0 || category >= FUNCTION_CATEGORIES) return {};
  return CATEGORIES[category];
}

const char* category_name(int category) {
  return category >= 0 && category < FUNCTION_CATEGORIES ? CATEGORY_NAMES[category] : "";
}

CategoryRange group_categories(int group) {
  return group >= 0 && group < FUNCTION_GROUPS ? GROUPS[group] : CategoryRange{0, -1};
}

const char* group_name(int group) { return group >= 0 && group < FUNCTION_GROUPS ? GROUP_NAMES[group] : ""; }

std::string function_snippet(int category, const std::string& label) {
  for (const FunctionEntry& entry : category_functions(category)) {
    if (label == entry.label) return entry.form ? entry.form : entry.label;
  }
  return "";
}

std::span<const NamedColour> palette_colours() { return COLOURS; }
std::span<const PianoNote> piano_notes() { return NOTES; }
std::span<const char* const> sound_labels() { return SOUNDS; }

const std::string& other_sound_snippet() {
  // A sound the learner's program fetches from the web: an example address to replace.
  static const std::string TEXT =
      "nuovo_suono=ottieni suono --> (PERCORSO: \"internet/https://upload.wikimedia.org/wikipedia/commons/c/c8/"
      "Example.ogg\")\r\n//Il suono deve trovarsi sul web ed essere in formato .ogg";
  return TEXT;
}

std::span<const char* const> font_labels() { return FONTS; }

std::string font_file_of(const std::string& label) {
  std::string file = label;
  for (char& c : file) {
    if (c == ' ') c = '_';
  }
  return file + ".ttf";
}

std::span<const char* const> variable_labels() { return VARIABLES; }

const std::string& other_variable_snippet() {
  static const std::string TEXT =
      "nome_variabile = valore\r\n//IL VALORE PUO' ESSERE:\r\n//- Un numero intero o decimale,      esempi: "
      "gatto = 5                          gatto = 5.23\r\n//- Una espressione,                            esempi: "
      "gatto = 5+2                      gatto = 5+2+(3+(2/1.5*4)-cane)\r\n//- Una stringa di testo                "
      "       esempi: gatto = \"Ciao gatto!\"      gatto = \"Il mio gatto ha 5 anni\" ";
  return TEXT;
}

std::span<const SymbolKey> symbol_keys() { return SYMBOLS; }
std::span<const ReadyKit> ready_kits() { return KITS; }
std::span<const DirectionMove> direction_moves() { return MOVES; }
