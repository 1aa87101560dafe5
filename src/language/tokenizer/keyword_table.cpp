// The keyword table, group by group, in the order the tokeniser applies it.
//
// Entries are exact: "ottieni nomralizzazione componente y del vettore" is
// matched as it is spelled, "INIZiale" is what an earlier rewrite has made of
// "INIZIALE" by the time the table runs, "limitato_del_variabile" has already
// had its " del " joined, and "quest’area" has a typographic apostrophe.
// The five entries that stand twice stay twice; the second pass over a phrase
// that is already joined finds nothing to do.
#include "language/tokenizer/keyword_table.h"

constexpr std::array<std::string_view, CTRL_KEYWORD_COUNT> ctrl_keyword_table = {
    // Argument keys (188): the capitalised names written before ":" inside a call's brackets.
    "X", "Y", "X 1", "Y 1", "X 2", "Y 2", "X 3", "Y 3", "X 4", "Y 4", "X 5", "Y 5", "X 6", "Y 6",
    "X 7", "Y 7", "X 8", "Y 8", "RAGGIO", "ALTEZZA", "LARGHEZZA", "LARGHEZZA CASELLA",
    "NUMERO LATI", "COLORE", "COLORE 1", "COLORE 2", "COLORE A", "COLORE B", "COLORE C", "COLORE D",
    "COLORE E", "COLORE F", "COLORE G", "COLORE H", "COLORE I", "COLORE J", "COLORE K", "COLORE L",
    "COLORE M", "COLORE N", "COLORE O", "COLORE P", "COLORE SFONDO", "COLORE TESTO", "COLORE LINEE",
    "TRASPARENZA", "LIMITE 1", "LIMITE 2", "STATO 1", "STATO 2", "VARIABILE CHE CONTROLLA",
    "SOLO CONTORNO", "VALORE 1", "VALORE 2", "VALORE 3", "VALORE 4", "VALORE 5", "VALORE 6",
    "VALORE 7", "VALORE 8", "TESTO", "TESTO 1", "TESTO 2", "TESTO 3", "TESTO 4", "TESTO 5",
    "TESTO 6", "TESTO 7", "TESTO 8", "NUOVO VALORE", "VALORI", "SUONO", "RIPETI SUONO",
    "INTONAZIONE", "NOME", "RIGHE", "COLONNE", "RIGA", "COLONNA", "COLONNA 1", "COLONNA 2",
    "COLONNA 3", "COLONNA 4", "COLONNA 5", "COLONNA 6", "COLONNA 7", "COLONNA 8", "COLONNA 9",
    "COLONNA 10", "COLONNA 11", "COLONNA 12", "COLONNA 13", "COLONNA 14", "COLONNA 15",
    "COLONNA 16", "ALLINEAMENTO ORIZZONTALE", "ALLINEAMENTO VERTICALE", "ORIGINE X", "ORIGINE Y",
    "STILE", "PAROLA", "NUOVA PAROLA", "SCALA ASSE X", "SCALA ASSE Y", "SCALA",
    "VELOCITA ANIMAZIONE", "FOTOGRAMMI", "NOTE", "RIPETI MELODIA", "BPM", "DATA", "DATA 1",
    "DATA 2", "ELEMENTO", "GIORNO", "MESE", "ANNO", "ORA", "MINUTO", "SECONDO", "OGGETTO",
    "ESEMPLARE", "ELEMENTO", "VELOCITA", "DIREZIONE", "ROTAZIONE", "Z", "ELEMENTO 1", "ELEMENTO 2",
    "PERCORSO", "TIPO", "CHIUSO", "COORDINATE", "RELATIVO", "QUANDO FINISCE", "DISEGNA PERCORSO",
    "VALORE", "VALORE PREDEFINITO", "VALORE MINIMO", "VALORE MASSIMO", "CIFRARIO", "CHIAVE",
    "PORTA", "BAUD", "CONNESSIONE", "TESTO INSERITO", "EFFETTO", "TASTO", "DIMENSIONE MINIMA",
    "DIMENSIONE MASSIMA", "COLORE INIZiale", "COLORE MEDIANO", "COLORE FINALE",
    "TRASPARENZA INIZiale", "TRASPARENZA FINALE", "TRASPARENZA MEDIANA", "VELOCITA MINIMA",
    "INCREMENTO DIREZIONE", "VELOCITA MASSIMA", "ROTAZIONE MINIMA", "ROTAZIONE MASSIMA",
    "DIREZIONE MINIMA", "DIREZIONE MASSIMA", "COLORE ADDITIVO", "DURATA MINIMA", "DURATA MASSIMA",
    "CRESCITA", "VARIAZIONE CRESCITA", "VARIAZIONE VELOCITA", "VARIAZIONE DIREZIONE",
    "VARIAZIONE ROTAZIONE", "ACCELERAZIONE", "INCREMENTO ROTAZIONE", "FORMA", "PARTICELLA",
    "DISTRIBUZIONE", "DIVIDENDO", "DIVISORE", "FOTOGRAMMA", "POSIZIONE TRACCIA", "TIMER 1",
    "TIMER 2", "TIMER 3", "TIMER 4", "DICE", "PENSA", "ELEMENTO COINVOLTO", "DISEGNO",
    // Drawing (18): shapes, text, images, tables, pixel art, rulers and protractor.
    "disegna cerchio", "disegna ellisse", "disegna rettangolo", "disegna triangolo",
    "disegna linea", "disegna punto", "disegna poligono regolare", "disegna poligono irregolare",
    "disegna testo", "disegna immagine", "disegna fotogramma", "disegna tabella",
    "ottieni immagine", "elimina immagine", "ottieni stile testo", "disegna pixel art",
    "disegna righelli", "disegna goniometro",
    // Text (12): value functions over strings.
    "ottieni numero da testo", "ottieni testo combinato",
    "ottieni il simbolo di un testo a una determinata posizione",
    "ottieni il numero di parole specificate in un testo", "ottieni lunghezza testo",
    "ottieni testo con parola sostituita solo la prima volta",
    "ottieni testo con parola sostituita", "ottieni testo maiuscolo", "ottieni testo minuscolo",
    "ottieni un pezzo di questo testo",
    "ottieni testo con inserito altro testo a una determinata posizione",
    "ottieni posizione parola",
    // Chance (4): random choices and the seed.
    "ottieni uno a caso di questi valori", "ottieni un valore compreso tra questi",
    "ottieni un valore intero compreso tra questi", "attiva casualità diversa per ogni avvio",
    // Logic (1): negation.
    "ottieni la negazione di",
    // Mathematics (24): rounding, extremes, means, logarithms, powers and division.
    "ottieni l'arrotondamento per difetto di", "ottieni l'arrotondamento per eccesso di",
    "ottieni il valore intero di", "ottieni il valore decimale di", "ottieni il valore assoluto di",
    "ottieni il segno di", "ottieni il massimo tra", "ottieni il minimo tra",
    "ottieni la media tra", "ottieni il valore più vicino alla media tra",
    "ottieni l'interpolazione lineare tra", "ottieni il valore limitato_del_variabile tra",
    "ottieni la funzione esponenziale di", "ottieni il logaritmo naturale di",
    "ottieni il logaritmo in base 2 di", "ottieni il logaritmo in base 10 di",
    "ottieni il logaritmo in base n di", "ottieni la potenza di", "ottieni il quadrato di",
    "ottieni la radice quadrata di", "ottieni il quoziente_del_divisione tra",
    "ottieni il resto_del_divisione tra", "ottieni potenza modulare di",
    "ottieni risultato espressione da testo",
    // Trigonometry (11): ratios, their inverses, angle units and vector components.
    "ottieni il seno di", "ottieni il coseno di", "ottieni la tangente di", "ottieni l'arcoseno di",
    "ottieni l'arcocoseno di", "ottieni l'arcotangente di", "ottieni l'arcotangente 2 di",
    "ottieni il valore convertito da radianti a gradi di",
    "ottieni il valore convertito da gradi a radianti di",
    "ottieni la componente x_del_vettore dato angolo e lunghezza",
    "ottieni la componente y_del_vettore dato angolo e lunghezza",
    // Vectors (7): normalisation, distance, direction and products.
    "ottieni normalizzazione componente x del vettore",
    "ottieni nomralizzazione componente y del vettore", "ottieni distanza tra due punti",
    "ottieni direzione tra due punti", "ottieni prodotto scalare di",
    "ottieni prodotto scalare normalizzato di", "ottieni differenza angolare tra",
    // Colours (11): building and taking colours apart.
    "ottieni colore rgb", "ottieni colore hsv", "ottieni miscela colori da",
    "ottieni valore rosso da", "ottieni valore verde da", "ottieni valore blu da",
    "ottieni tinta da", "ottieni saturazione da", "ottieni luminosità da",
    "ottieni colore di questo pixel", "ottieni differenza colori",
    // Sound (20): playing, pausing and reading sounds and melodies.
    "suona", "suona melodia", "imposta volume principale", "ottieni volume principale",
    "ottieni suono", "suona audio dinamico", "modifica audio dinamico",
    "ottieni risultato controllo se sta suonando", "metti in pausa questo suono",
    "riprendi a suonare questo suono", "ottieni risultato controllo se questo suono è in pausa",
    "ferma questo suono", "ottieni posizione attuale traccia_del_suono",
    "ottieni lunghezza traccia_del_suono", "modifica posizione ascoltatore",
    "ottieni volume microfono", "interrompi suono", "interrompi tutti i suoni",
    "ottieni valore volume di", "ottieni valore intonazione di",
    // Program and window (8): grid, screenshots, full screen, exit and restart.
    "imposta griglia", "ottieni stringa da numero", "ottieni numero da stringa", "salva schermata",
    "esci dal programma", "riavvia il programma", "imposta schermo intero", "crea gif animata",
    // Input dialogs (4): questions, menus and typed answers.
    "ottieni risposta da domanda", "ottieni opzione scelta da menu", "ottieni numero da utente",
    "ottieni testo da utente",
    // Virtual keys (4): on-screen keys and their classes.
    "crea tasto virtuale", "distruggi tasto virtuale", "ottieni stato tasto virtuale",
    "crea classe di tasti",
    // Tables (7): creating, filling, reading and saving tables.
    "crea tabella", "modifica tabella", "ottieni dato da tabella", "riempi tabella",
    "distruggi tabella", "esporta tabella", "importa tabella",
    // Sound constants (16): names of the built-in sounds.
    "suono beep1", "suono beep2", "suono beep3", "suono miao", "suono bau", "suono quack",
    "suono beee", "suono squit", "suono muu", "suono huahah", "suono hiii", "suono hiho",
    "suono driiin", "suono errore", "suono ok", "suono nota piano",
    // Colour constants (10): the colour names of two words, which must become one token.
    "verde scuro", "grigio chiaro", "grigio scuro", "verde oliva", "verde acqua", "grigio scuro",
    "rosso vermiglione", "castagno scuro", "blu ardesia", "rosa vivo",
    // Numeric constants (15): the constant names of two or more words.
    "Pi greco", "numero di Nepero", "sezione aurea", "un mezzo", "un terzo", "un quarto",
    "un quinto", "un sesto", "un settimo", "un quarto", "un ottavo", "un nono", "un decimo",
    "tre quarti", "due terzi",
    // Dates (16): the current date and time, and dates built and compared.
    "ottieni data attuale come testo", "ottieni data attuale", "ottieni secondo attuale",
    "ottieni minuto attuale", "ottieni ora attuale", "ottieni giorno attuale",
    "ottieni nome_del_giorno attuale", "ottieni mese attuale", "ottieni nome_del_mese attuale",
    "ottieni anno attuale", "ottieni una data", "ottieni risultato controllo se la data è oggi",
    "ottieni elemento da questa data", "ottieni risultato confronto date",
    "ottieni differenza tra due date", "ottieni elemento da questa data",
    // Direction game (7): the moves of the built-in direction game and its character's colours.
    "usa gioco delle direzioni", "muovi in_alto", "muovi in_basso", "muovi a_destra",
    "muovi a_sinistra", "cambia colore_del_corpo_del_personaggio",
    "cambia colore degli occhi_del_personaggio",
    // Objects and elements (34): classes, instances, collisions, clicks and stamps.
    "crea un oggetto", "crea un esemplare", "modifica un elemento",
    "ottieni risultato controllo collisione tra",
    "ottieni risultato controllo se esistono esemplari di", "distruggi un esemplare",
    "distruggi tutti gli esemplari di", "ottieni nome dell'esemplare più vicino a",
    "ottieni nome dell'esemplare più lontano da", "ottieni numero esemplari esistenti di",
    "ottieni numero totale di esemplari esistenti",
    "ottieni risultato controllo se elemento è stato cliccato",
    "ottieni risultato controllo se elemento è cliccato",
    "ottieni risultato controllo se il mouse è entrato in questo elemento",
    "ottieni risultato controllo se il mouse è uscito da questo elemento",
    "ottieni risultato controllo se elemento ha toccato il bordo_del_finestra",
    "ottieni risultato controllo se elemento è uscito dalla finestra",
    "trasporta elemento al lato opposto quando esce dalla finestra",
    "muovi un elemento verso un punto", "distruggi elementi che si trovano in questo punto",
    "ottieni risultato controllo se ci sono elementi in questo punto",
    "ottieni distanza tra due elementi", "distruggi questi elementi quando collidono tra loro",
    "fai parlare un elemento", "fai pensare un elemento", "timbra con questo elemento",
    "cancella timbri", "distruggi elemento quando collide con",
    "distruggi elemento quando questa sua variabile locale equivale a",
    "distruggi elemento quando esce dalla finestra",
    "distruggi elementi che si trovano in quest’area rettangolare",
    "distruggi elementi che si trovano in quest’area circolare",
    "modifica elemento quando collide con", "ottieni ultimo esemplare cliccato",
    // Paths (6): paths and the elements that follow them.
    "ottieni un percorso", "assegna un percorso da seguire a un elemento",
    "ferma movimento di un elemento",
    "ottieni risultato controllo se questo elemento è arrivato alla fine del percorso assegnato",
    "ottieni velocità percorrenza percorso", "imposta velocità percorrenza percorso",
    // Timers (8): the eight timers of an element.
    "timer 1", "timer 2", "timer 3", "timer 4", "timer 5", "timer 6", "timer 7", "timer 8",
    // Text files (6): writing and reading a user's files.
    "scrivi su questo file", "sovrascrivi su questo file", "scrivi su questo file",
    "scrivi una nuova linea su questo file", "ottieni testo da questo file",
    "ottieni una riga di testo da questo file",
    // Interface elements (9): check boxes, switches, options, text boxes and sliders.
    "crea casella di spunta", "crea interruttore", "crea gruppo di opzioni",
    "crea casella di testo multilinea", "crea casella di testo",
    "imposta testo in una casella di testo", "crea barra di controllo verticale",
    "crea barra di controllo orizzontale", "distruggi interfaccia",
    // Ciphers (2): enciphering and deciphering text.
    "ottieni testo cifrato", "ottieni testo decifrato",
    // Boards (6): the serial link to a microcontroller board.
    "invia testo ad Arduino", "elimina connessione con Arduino",
    "elimina tutte le connessioni con Arduino", "ottieni risultato controllo se Arduino è connesso",
    "ottieni testo da Arduino", "ottieni connessione con Arduino",
    // Effects and particles (9): ready effects and particle generators.
    "disegna effetto speciale animato predefinito",
    "attiva generatore di particelle solo per un istante", "attiva generatore di particelle",
    "disegna direttamente delle particelle", "ottieni generatore di particelle",
    "ottieni particella", "disegna effetto speciale su un elemento quando viene creato",
    "disegna effetto speciale su un elemento quando viene distrutto",
    "disegna effetto speciale su un elemento",
    // Clipboard (3): reading and writing the system clipboard.
    "ottieni risultato controllo se c'è testo negli appunti", "ottieni testo dagli appunti",
    "copia negli appunti",
    // External functions (1): importing a function from a library.
    "importa funzione esterna",
};
