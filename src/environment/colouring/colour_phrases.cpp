// The phrases of the code colouring, by colour class, in the order in which
// the colouring knows them. They are the language's phrases as a learner
// writes them, and are kept apart from the tokeniser's own tables: the two
// change for different reasons.
#include "environment/colouring/colour_phrases.h"

#include <span>
#include <string_view>

namespace {

constexpr std::string_view KEYWORDS[] = {
    " se ", " del ", " della ", " dello ", " dell'", "non ", " non ", "definisci funzione", "suggerimento",
    "argomenti", "con questa funzione ottieni", "includi", " e ", " o ", " o esclusivamente ", "allora", "{", "}",
    ".", ":", " di ", "diminuisci", "aumenta", "ripeti finche", "finche", "ripeti finché", "finché", "ripeti per",
    "volte",
};

constexpr std::string_view FUNCTIONS[] = {
    "disegna cerchio", "disegna ellisse", "disegna rettangolo", "disegna tabella", "disegna immagine",
    "disegna fotogramma", "disegna linea", "disegna punto", "disegna poligono regolare",
    "disegna poligono irregolare", "disegna testo", "disegna triangolo", "disegna righelli", "disegna goniometro",
    "ottieni immagine", "elimina immagine", "ottieni numero da testo", "ottieni testo combinato",
    "ottieni lunghezza testo", "ottieni testo con parola sostituita",
    "ottieni testo con parola sostituita solo la prima volta", "ottieni stile testo",
    "ottieni uno a caso di questi valori", "ottieni un valore compreso tra questi",
    "ottieni un valore intero compreso tra questi", "attiva casualità diversa per ogni avvio",
    "ottieni la negazione di", "ottieni l'arrotondamento per difetto di", "ottieni l'arrotondamento per eccesso di",
    "ottieni il valore intero di", "ottieni il valore decimale di", "ottieni il valore assoluto di",
    "ottieni il segno di", "ottieni il massimo tra", "ottieni il minimo tra", "ottieni la media tra",
    "ottieni il valore più vicino alla media tra", "ottieni l'interpolazione lineare tra",
    "ottieni il valore limitato della variabile tra", "ottieni la funzione esponenziale di",
    "ottieni il logaritmo in base 2 di", "ottieni il logaritmo in base 10 di", "ottieni il logaritmo in base n di",
    "ottieni la potenza di", "ottieni il quadrato di", "ottieni la radice quadrata di", "ottieni il seno di",
    "ottieni il coseno di", "ottieni la tangente di", "ottieni l'arcoseno di", "ottieni l'arcocoseno di",
    "ottieni l'arcotangente di", "ottieni l'arcotangente 2 di", "ottieni il valore convertito da radianti a gradi di",
    "ottieni il valore convertito da gradi a radianti di",
    "ottieni la componente x del vettore dato angolo e lunghezza",
    "ottieni la componente y del vettore dato angolo e lunghezza", "ottieni distanza tra due punti",
    "ottieni direzione tra due punti", "ottieni prodotto scalare di",
    "ottieni ottieni prodotto scalare normalizzato di", "ottieni differenza angolare tra ",
    "ottieni potenza modulare di", "ottieni risultato espressione da testo", "crea tasto virtuale",
    "distruggi tasto virtuale", "ottieni stato tasto virtuale", "ottieni colore rgb", "ottieni colore hsv",
    "ottieni miscela colori da", "ottieni differenza colori", "suona", "ottieni suono", "suona melodia",
    "ottieni volume microfono", "ottieni volume principale", "imposta volume principale", "interrompi tutti i suoni",
    "suona audio dinamico", "modifica audio dinamico", "ottieni risultato controllo se sta suonando",
    "metti in pausa questo suono", "riprendi a suonare questo suono",
    "ottieni risultato controllo se questo suono è in pausa", "ferma questo suono",
    "ottieni posizione attuale traccia del suono", "ottieni lunghezza traccia del suono",
    "modifica posizione ascoltatore", "imposta griglia", "salva schermata", "esci dal programma",
    "riavvia il programma", "crea tabella", "distruggi tabella", "modifica tabella", "riempi tabella",
    "ottieni dato da tabella", "esporta tabella", "importa tabella", "ottieni data attuale",
    "ottieni data attuale come testo", "ottieni secondo attuale", "ottieni minuto attuale", "ottieni ora attuale",
    "ottieni giorno attuale", "ottieni nome del giorno attuale", "ottieni mese attuale",
    "ottieni nome del mese attuale", "ottieni anno attuale", "ottieni una data",
    "ottieni risultato controllo se la data è oggi", "ottieni risultato confronto date",
    "ottieni risultato differenza tra due date", "ottieni elemento da questa data", "crea un oggetto",
    "crea un esemplare", "modifica un elemento", "ottieni risultato controllo collisione tra",
    "ottieni risultato controllo se esistono esemplari di", "distruggi un esemplare",
    "distruggi tutti gli esemplari di", "ottieni nome dell'esemplare più vicino a",
    "ottieni nome dell'esemplare più lontano da", "ottieni numero esemplari esistenti di",
    "ottieni numero totale di esemplari esistenti", "ottieni risultato controllo se elemento è stato cliccato",
    "ottieni risultato controllo se elemento è cliccato",
    "ottieni risultato controllo se il mouse è entrato in questo elemento",
    "ottieni risultato controllo se il mouse è uscito da questo elemento",
    "ottieni risultato controllo se elemento ha toccato il bordo della finestra",
    "ottieni risultato controllo se elemento è uscito dalla finestra",
    "trasporta elemento al lato opposto quando esce dalla finestra", "muovi un elemento verso un punto",
    "distruggi elementi che si trovano in questo punto",
    "ottieni risultato controllo se ci sono elementi in questo punto", "ottieni distanza tra due elementi",
    "disegna effetto speciale su un elemento", "disegna effetto speciale su un elemento quando viene creato",
    "disegna effetto speciale su un elemento quando viene distrutto", "disegna pixel art", "ottieni un percorso",
    "assegna un percorso da seguire a un elemento", "ferma movimento di un elemento",
    "ottieni risultato controllo se questo elemento è arrivato alla fine del percorso assegnato",
    "ottieni velocità percorrenza percorso", "imposta velocità percorrenza percorso", "ottieni testo cifrato",
    "ottieni testo decifrato", "invia testo ad Arduino", "elimina connessione con Arduino",
    "elimina tutte le connessioni con Arduino", "ottieni risultato controllo se Arduino è connesso",
    "ottieni testo da Arduino", "ottieni connessione con Arduino", "disegna effetto speciale animato predefinito",
    "disegna direttamente delle particelle", "ottieni generatore di particelle", "ottieni particella",
    "crea gif animata", "imposta schermo intero", "distruggi elemento quando collide con",
    "distruggi elemento quando questa sua variabile locale equivale a",
    "distruggi elemento quando esce dalla finestra", "distruggi elementi che si trovano in quest'area rettangolare",
    "distruggi elementi che si trovano in quest'area circolare", "modifica elemento quando collide con",
    "fai parlare un elemento", "fai pensare un elemento", "ottieni ultimo esemplare cliccato",
    "timbra con questo elemento", "cancella timbri", "ottieni testo maiuscolo", "ottieni testo minuscolo",
    "ottieni testo con inserito altro testo a una determinata posizione", "ottieni posizione parola",
    "ottieni risultato controllo se c'è testo negli appunti", "ottieni testo dagli appunti", "copia negli appunti",
    "importa funzione esterna", "abbrevia", "definisci costante", "-->", "usa gioco delle direzioni",
    "muovi a destra", "muovi a sinistra", "muovi in alto", "muovi in basso",
    "cambia colore del corpo del personaggio", "cambia colore degli occhi del personaggio",
    "ottieni il numero di parole specificate in un testo",
    "ottieni il simbolo di un testo a una determinata posizione", "disegna ellisse ", "sovrascrivi su questo file",
    "scrivi su questo file", "scrivi una nuova linea su questo file", "ottieni testo da questo file",
    "ottieni una riga di testo da questo file", "crea casella di spunta", "crea interruttore",
    "crea gruppo di opzioni", "crea casella di testo multilinea", "crea casella di testo",
    "imposta testo in una casella di testo", "crea barra di controllo verticale",
    "crea barra di controllo orizzontale", "distruggi interfaccia", "crea classe di tasti",
    "ottieni un pezzo di questo testo", "attiva generatore di particelle",
    "attiva generatore di particelle solo per un istante", "ottieni il quoziente della divisione tra",
    "ottieni il resto della divisione tra", "distruggi questi elementi quando collidono tra loro",
    "ottieni il logaritmo naturale di", "ottieni colore di questo pixel",
};

constexpr std::string_view CONSTANTS[] = {
    "sé stesso", "intero", "vero", "falso", "x del mouse", "y del mouse", "larghezza finestra", "altezza finestra",
    "colore sfondo", "nome finestra", "ripetizione", "x casuale", "y casuale", "angolo casuale", "colore casuale",
    "rosso", "verde", "verde scuro", "blu", "blu ardesia", "bianco", "nero", "grigio", "grigio chiaro",
    "grigio scuro", "giallo", "arancione", "ciano", "magenta", "verde acqua", "verde oliva", "marrone", "argento",
    "oro", "bronzo", "rosa", "rosa vivo", "azzurro", "corallo", "viola", "rosso vermiglione", "castagno",
    "castagno scuro", "malva", "giada", "è uguale a", "è minore di", "è maggiore di", "è diverso da", "un mezzo",
    "mezzo", "mezza", "intera", "niente", "nullo", "Pi greco", "sezione aurea", "un terzo", "un quarto", "un quinto",
    "un sesto", "un settimo", "un ottavo", "un nono", "un decimo", "due terzi", "tre quarti", "Do", "Re", "Mi", "Fa",
    "Sol", "La", "Si", "Do diesis", "Re bemolle", "Re diesis", "Mi bemolle", "Fa diesis", "Sol diesis", "La bemolle",
    "La diesis", "Si bemolle", "è stato cliccato", "è cliccato", "non è cliccato", "al centro", "a destra",
    "a sinistra", "in alto", "in basso", "suono beep1", "suono beep2", "suono beep3", "suono miao", "suono bau",
    "suono quack", "suono beee", "suono squit", "suono muu", "suono huahah", "suono hiii", "suono hiho",
    "suono driiin", "suono errore", "suono ok", "suono nota piano", "Arial", "global.font", "Verdana",
    "Times _new Roman", "Tahoma", "Comic Sans", "Brush Script", "Old English Text", "Chiller", "Stencil", "Gigi",
    "Bauhaus 93", "timer 1", "timer 2", "timer 3", "timer 4", "timer 5", "timer 6", "timer 7", "timer 8",
    "rotella del mouse in su", "rotella del mouse in giu", "INIZIA", "CICLO CONTINUO", "è minore o uguale a",
    "è maggiore o uguale a", "numero di Nepero",
};

constexpr std::string_view LABELS[] = {
    "X", "Y", "Z", "RAGGIO", "X 1", "Y 1", "X 2", "Y 2", "X 3", "Y 3", "X 4", "Y 4", "X 5", "Y 5", "X 6", "Y 6",
    "X 7", "Y 7", "X 8", "Y 8", "NOME", "TESTO", "TESTO 1", "TESTO 2", "TESTO 3", "TESTO 4", "TESTO 5", "TESTO 6",
    "TESTO 7", "TESTO 8", "TESTO INSERITO", "VISIBILE", "RIGA", "SUONO", "INTONAZIONE", "COLONNA", "COLONNA 1",
    "COLONNA 2", "COLONNA 3", "COLONNA 4", "COLONNA 5", "COLONNA 6", "COLONNA 7", "COLONNA 8", "COLONNE", "RIGHE",
    "COLORE", "COLORE 1", "COLORE 2", "COLORE SFONDO", "COLORE LINEE", "COLORE TESTO", "TRASPARENZA", "SCALA",
    "SCALA ASSE Y", "ROTAZIONE", "SPESSORE", "ALTEZZA", "LARGHEZZA", "LUNGHEZZA", "LARGHEZZA CASELLA", "BASE",
    "INTERLINEA", "CARATTERE", "NUOVO VALORE", "VALORE", "VALORE 1", "VALORE 2", "VALORE 3", "VALORE 4", "VALORE 5",
    "VALORE 6", "VALORE 7", "VALORE 8", "VALORE PREDEFINITO", "VALORE MINIMO", "VALORE MASSIMO",
    "ALLINEAMENTO ORIZZONTALE", "ALLINEAMENTO VERTICALE", "ROSSO", "VERDE", "BLU", "ETICHETTA", "CLASSE", "QUESTO",
    "SOLO CONTORNO", "STILE", "DIMENSIONE", "POSIZIONE", "POSIZIONE TRACCIA", "PAROLA", "NUOVA PAROLA", "IMMAGINE",
    "ORIGINE X", "ORIGINE Y", "SATURAZIONE", "LUMINOSITA", "TINTA", "CASELLE", "SCALA ASSE X", "FOTOGRAMMI", "VOLUME",
    "RIPETI MELODIA", "RIPETI SUONO", "BPM", "NOTE", "DATA", "DATA 1", "DATA 2", "ELEMENTO", "ELEMENTO 1",
    "ELEMENTO 2", "ELEMENTO COINVOLTO", "GIORNO", "MESE", "ANNO", "ORA", "MINUTO", "SECONDO", "OGGETTO", "ESEMPLARE",
    "VELOCITA", "DIREZIONE", "PERCORSO", "TIPO", "CHIUSO", "COORDINATE", "RELATIVO", "QUANDO FINISCE",
    "DISEGNA PERCORSO", "GENITORE", "ANGOLO", "CIFRARIO", "CHIAVE", "PORTA", "BAUD", "CONNESSIONE", "EFFETTO",
    "TASTO", "PENSA", "DICE", "DISEGNO", "DIMENSIONE MINIMA", "DIMENSIONE MASSIMA", "COLORE MEDIANO", "COLORE FINALE",
    "TRASPARENZA FINALE", "TRASPARENZA MEDIANA", "VELOCITA MINIMA", "INCREMENTO DIREZIONE", "VELOCITA MASSIMA",
    "ROTAZIONE MINIMA", "ROTAZIONE MASSIMA", "DIREZIONE MINIMA", "DIREZIONE MASSIMA", "COLORE ADDITIVO", "COLORE A",
    "COLORE B", "COLORE C", "COLORE D", "COLORE E", "COLORE F", "COLORE G", "COLORE H", "COLORE I", "COLORE J",
    "COLORE K", "COLORE L", "COLORE M", "COLORE N", "COLORE O", "COLORE P", "DURATA", "DURATA MINIMA",
    "DURATA MASSIMA", "CRESCITA", "VARIAZIONE CRESCITA", "VARIAZIONE VELOCITA", "VARIAZIONE DIREZIONE",
    "VARIAZIONE ROTAZIONE", "ACCELERAZIONE", "INCREMENTO ROTAZIONE", "PARTICELLA", "NUMERO", "NUMERO LATI", "FORMA",
    "DISTRIBUZIONE", "QUOZIENTE", "DIVIDENDO", "DIVISORE", "FOTOGRAMMA", "VARIABILE", "TIMER 1", "TIMER 2", "TIMER 3",
    "TIMER 4", "SECONDI", "ESPONENTE", "TRASPARENZA INIZIALE", "COLORE INIZIALE",
};

// The keys of "tasto K è premuto", "tasto K è stato premuto" and "tasto K è stato rilasciato".
constexpr std::string_view KEY_NAMES[] = {
    "invio", "barra spaziatrice", "ctrl", "alt", "freccia su", "freccia giu", "freccia destra", "freccia sinistra",
    "sinistro del mouse", "destro del mouse", "centrale del mouse",
};

void add(std::vector<ColourPhrase>& all, std::span<const std::string_view> phrases, uint32_t colour) {
  for (const std::string_view p : phrases) all.push_back({std::string(p), colour});
}

std::vector<ColourPhrase> all_phrases() {
  std::vector<ColourPhrase> all;
  add(all, KEYWORDS, TAG_KEYWORD);
  add(all, FUNCTIONS, TAG_FUNCTION);
  add(all, CONSTANTS, TAG_CONSTANT);
  std::vector<std::string> keys(std::begin(KEY_NAMES), std::end(KEY_NAMES));
  for (char c = '0'; c <= '9'; ++c) keys.emplace_back(1, c);
  for (char c = 'A'; c <= 'Z'; ++c) keys.emplace_back(1, c);
  for (const std::string& key : keys) {
    for (const char* state : {" è premuto", " è stato premuto", " è stato rilasciato"}) {
      all.push_back({"tasto " + key + state, TAG_CONSTANT});
    }
  }
  add(all, LABELS, TAG_LABEL);
  return all;
}

}  // namespace

const std::vector<ColourPhrase>& colour_phrases() {
  static const std::vector<ColourPhrase> phrases = all_phrases();
  return phrases;
}
