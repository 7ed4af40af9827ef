<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>QMessageBox</name>
    <message>
        <source>&amp;Use simulated controllers</source>
        <translation>&amp;Simulierte Controller verwenden</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>The installation is incomplete; install TouchUtility again.</source>
        <translation>Die Installation ist unvollständig; installieren Sie TouchUtility erneut.</translation>
    </message>
    <message>
        <source>Mend or remove the file, then start again.</source>
        <translation>Berichtigen oder entfernen Sie die Datei, und starten Sie dann neu.</translation>
    </message>
    <message>
        <source>Without the touch driver no controller can be reached. Install the driver of your controller, or look around with simulated controllers: the page &quot;Doctor&quot; there, or &apos;touchctl doctor&apos; in a shell, says where the driver was looked for.</source>
        <translation>Ohne den Touch-Treiber ist kein Controller erreichbar. Installieren Sie den Treiber Ihres Controllers, oder sehen Sie sich mit simulierten Controllern um: Dort sagt die Seite „Diagnose“, in einer Shell „touchctl doctor“, wo der Treiber gesucht wurde.</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>There is not enough memory for that; it was given up.</source>
        <translation>Dafür reicht der Speicher nicht; es wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Close other programs or windows and try again, or open a smaller file.</source>
        <translation>Schließen Sie andere Programme oder Fenster und versuchen Sie es noch einmal, oder öffnen Sie eine kleinere Datei.</translation>
    </message>
    <message>
        <source>Start the program in another folder, or name one with --work-dir DIR.</source>
        <translation>Starten Sie das Programm in einem anderen Ordner, oder nennen Sie einen mit --work-dir DIR.</translation>
    </message>
    <message>
        <source>The touch driver %1 has not returned from %2 for %3 seconds.</source>
        <translation>Der Touch-Treiber %1 ist seit %3 Sekunden nicht aus %2 zurückgekehrt.</translation>
    </message>
    <message>
        <source>Wait, or restart the driver: then this action ends as if the controller did not answer.</source>
        <translation>Warten Sie, oder starten Sie den Treiber neu: Dann endet diese Aktion, als ob der Controller nicht antwortete.</translation>
    </message>
    <message>
        <source>&amp;Wait</source>
        <translation>&amp;Warten</translation>
    </message>
    <message>
        <source>&amp;Restart the driver</source>
        <translation>Treiber &amp;neu starten</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>Name the folder of a commissioning, as in --simulate-from commissioning/A-17-2026-11-12.</source>
        <translation>Nennen Sie den Ordner einer Inbetriebnahme, etwa --simulate-from commissioning/A-17-2026-11-12.</translation>
    </message>
</context>
<context>
    <name>calibration</name>
    <message>
        <source>Touch the centre of the bright cross.</source>
        <translation>Berühren Sie die Mitte des hellen Kreuzes.</translation>
    </message>
    <message>
        <source>Three touches landed nowhere near.</source>
        <translation>Drei Berührungen landeten ganz woanders.</translation>
    </message>
    <message>
        <source>That touch landed beside the buttons.</source>
        <translation>Diese Berührung landete neben den Knöpfen.</translation>
    </message>
    <message>
        <source>That touch landed nowhere near. Touch the centre of the bright cross.</source>
        <translation>Diese Berührung landete ganz woanders. Berühren Sie die Mitte des hellen Kreuzes.</translation>
    </message>
    <message>
        <source>The calibration is good.</source>
        <translation>Die Kalibrierung ist gut.</translation>
    </message>
    <message>
        <source>No touch came for 20 seconds.</source>
        <translation>20 Sekunden lang kam keine Berührung.</translation>
    </message>
    <message>
        <source>The calibration is kept.</source>
        <translation>Die Kalibrierung bleibt.</translation>
    </message>
    <message>
        <source>Putting back the calibration from before …</source>
        <translation>Die vorige Kalibrierung wird zurückgeholt …</translation>
    </message>
    <message>
        <source>The calibration is good: all five touches landed near enough.</source>
        <translation>Die Kalibrierung ist gut: Alle fünf Berührungen landeten nahe genug.</translation>
    </message>
    <message>
        <source>The calibration is kept, although not all touches landed near.</source>
        <translation>Die Kalibrierung bleibt, obwohl nicht alle Berührungen nahe genug landeten.</translation>
    </message>
    <message>
        <source>The check was left.</source>
        <translation>Die Prüfung wurde verlassen.</translation>
    </message>
    <message>
        <source>The check broke off.</source>
        <translation>Die Prüfung brach ab.</translation>
    </message>
    <message>
        <source>Some touches landed too far off. Keep this calibration?</source>
        <translation>Einige Berührungen landeten zu weit daneben. Diese Kalibrierung behalten?</translation>
    </message>
</context>
<context>
    <name>canvas</name>
    <message>
        <source>Esc: stop opening %1 (%2 %)</source>
        <translation>Esc: Öffnen von %1 abbrechen (%2 %)</translation>
    </message>
    <message>
        <source>Esc: close the menu</source>
        <translation>Esc: Menü schließen</translation>
    </message>
    <message>
        <source>Esc: close the table</source>
        <translation>Esc: Tabelle schließen</translation>
    </message>
    <message>
        <source>Esc: leave</source>
        <translation>Esc: verlassen</translation>
    </message>
    <message>
        <source>Esc: clear 1 stroke</source>
        <translation>Esc: 1 Strich löschen</translation>
    </message>
    <message>
        <source>Esc: clear %1 strokes</source>
        <translation>Esc: %1 Striche löschen</translation>
    </message>
    <message>
        <source>%1, from edge to edge</source>
        <translation>%1, von Rand zu Rand</translation>
    </message>
    <message>
        <source>Each is kept in its folder, with &quot;.damaged&quot; at the end of its name.</source>
        <translation>Jede bleibt in ihrem Ordner, mit „.damaged“ am Ende des Namens.</translation>
    </message>
    <message>
        <source>An unsaved drawing (1 stroke) was found.</source>
        <translation>Eine nicht gespeicherte Zeichnung (1 Strich) wurde gefunden.</translation>
    </message>
    <message>
        <source>An unsaved drawing (%1 strokes) was found.</source>
        <translation>Eine nicht gespeicherte Zeichnung (%1 Striche) wurde gefunden.</translation>
    </message>
    <message>
        <source>If you do not restore it, it is kept as %1.</source>
        <translation>Wenn Sie sie nicht wiederherstellen, bleibt sie als %1 erhalten.</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Keep as file</source>
        <translation>Als Datei behalten</translation>
    </message>
    <message>
        <source>There is nothing to save: strokes are recorded once F has begun the test of the lines.</source>
        <translation>Es gibt nichts zu speichern: Striche werden aufgezeichnet, sobald F den Test der Linien begonnen hat.</translation>
    </message>
    <message>
        <source>%1 is there already. Replace it?</source>
        <translation>%1 ist schon vorhanden. Ersetzen?</translation>
    </message>
    <message>
        <source>%1 is a drawing without strokes.</source>
        <translation>%1 ist eine Zeichnung ohne Striche.</translation>
    </message>
    <message>
        <source>Esc: clear the drawing</source>
        <translation>Esc: Zeichnung löschen</translation>
    </message>
    <message>
        <source>Saved an empty drawing in %2</source>
        <translation>Leere Zeichnung gespeichert in %2</translation>
    </message>
    <message>
        <source>Saved 1 stroke in %2</source>
        <translation>1 Strich gespeichert in %2</translation>
    </message>
    <message>
        <source>Saved %1 strokes in %2</source>
        <translation>%1 Striche gespeichert in %2</translation>
    </message>
</context>
<context>
    <name>commands</name>
    <message>
        <source>The serial port is closed.</source>
        <translation>Der serielle Port ist geschlossen.</translation>
    </message>
</context>
<context>
    <name>commission</name>
    <message>
        <source>without it no touch is reported</source>
        <translation>ohne ihn wird keine Berührung gemeldet</translation>
    </message>
    <message>
        <source>touches are to act like a mouse</source>
        <translation>Berührungen sollen wie eine Maus wirken</translation>
    </message>
    <message>
        <source>a finger that rests would open menus that no visitor needs</source>
        <translation>ein ruhender Finger würde Menüs öffnen, die kein Besucher braucht</translation>
    </message>
    <message>
        <source>this mode is made for drawing</source>
        <translation>dieser Modus ist zum Zeichnen da</translation>
    </message>
    <message>
        <source>a pen that rests would open a menu</source>
        <translation>ein ruhender Stift würde ein Menü öffnen</translation>
    </message>
    <message>
        <source>Nothing is in the way.</source>
        <translation>Nichts steht im Weg.</translation>
    </message>
    <message>
        <source>%1 does not answer.</source>
        <translation>%1 antwortet nicht.</translation>
    </message>
    <message>
        <source>%1: unit type %2, firmware %3</source>
        <translation>%1: Typ %2, Firmware %3</translation>
    </message>
    <message>
        <source>Its parameters cannot be kept: %1.</source>
        <translation>Seine Parameter können nicht gesichert werden: %1.</translation>
    </message>
    <message>
        <source>Its parameters are kept in %1.</source>
        <translation>Seine Parameter sind in %1 gesichert.</translation>
    </message>
    <message>
        <source>%1 cannot be opened.</source>
        <translation>%1 kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>%1: %2 instead of %3: %4.</source>
        <translation>%1: %2 statt %3: %4.</translation>
    </message>
    <message>
        <source>All settings are as this use wants them.</source>
        <translation>Alle Einstellungen sind so, wie dieser Zweck sie verlangt.</translation>
    </message>
    <message>
        <source>Calibrated with %1 targets.</source>
        <translation>Mit %1 Zielen kalibriert.</translation>
    </message>
    <message>
        <source>Figures against limits</source>
        <translation>Werte und Grenzen</translation>
    </message>
    <message>
        <source>Other figures</source>
        <translation>Weitere Werte</translation>
    </message>
    <message>
        <source>for &quot;%1&quot;</source>
        <translation>für „%1“</translation>
    </message>
    <message>
        <source>Touch panel commissioning</source>
        <translation>Inbetriebnahme des Touch-Panels</translation>
    </message>
    <message>
        <source>Panel and controller</source>
        <translation>Panel und Controller</translation>
    </message>
    <message>
        <source>Run</source>
        <translation>Durchführung</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>Gemessen</translation>
    </message>
    <message>
        <source>Limit</source>
        <translation>Grenze</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Wo</translation>
    </message>
    <message>
        <source>Calibration and cause</source>
        <translation>Kalibrierung und Ursache</translation>
    </message>
    <message>
        <source>Error map</source>
        <translation>Fehlerkarte</translation>
    </message>
    <message>
        <source>Installed by</source>
        <translation>Installiert von</translation>
    </message>
    <message>
        <source>Accepted by</source>
        <translation>Abgenommen von</translation>
    </message>
    <message>
        <source>Lines</source>
        <translation>Linien</translation>
    </message>
    <message>
        <source>Steps</source>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>%1   ·   page %2 of %3</source>
        <translation>%1   ·   Seite %2 von %3</translation>
    </message>
    <message>
        <source>The calibration was not completed.</source>
        <translation>Die Kalibrierung wurde nicht beendet.</translation>
    </message>
    <message>
        <source>The check was not completed.</source>
        <translation>Die Prüfung wurde nicht beendet.</translation>
    </message>
    <message>
        <source>%1 strokes were taken.</source>
        <translation>%1 Striche wurden aufgenommen.</translation>
    </message>
    <message>
        <source>the times of the reports are not known</source>
        <translation>die Zeiten der Meldungen sind nicht bekannt</translation>
    </message>
    <message>
        <source>%1 reports a second while the finger is down.</source>
        <translation>%1 Meldungen je Sekunde, solange der Finger aufliegt.</translation>
    </message>
    <message>
        <source>What has to be there</source>
        <translation>Voraussetzungen</translation>
    </message>
    <message>
        <source>Looks at driver, ports, folder and screens, so that nothing stops you later.</source>
        <translation>Sieht nach Treiber, Anschlüssen, Ordner und Bildschirmen, damit Sie später nichts aufhält.</translation>
    </message>
    <message>
        <source>Which panel</source>
        <translation>Welches Panel</translation>
    </message>
    <message>
        <source>Says on the sheet which panel this is and who commissions it. A bar code scanner can type the serial number.</source>
        <translation>Sagt auf dem Blatt, welches Panel das ist und wer es in Betrieb nimmt. Die Seriennummer kann ein Strichcodeleser eingeben.</translation>
    </message>
    <message>
        <source>Controller and backup</source>
        <translation>Controller und Sicherung</translation>
    </message>
    <message>
        <source>Asks the controller what it is, and keeps its parameters so that they can be put back.</source>
        <translation>Fragt den Controller, was er ist, und sichert seine Parameter, damit sie zurückgeschrieben werden können.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Compares the settings with those that the panel&apos;s use wants.</source>
        <translation>Vergleicht die Einstellungen mit denen, die der Zweck des Panels verlangt.</translation>
    </message>
    <message>
        <source>Calibration</source>
        <translation>Kalibrierung</translation>
    </message>
    <message>
        <source>Makes touches land where the finger is.</source>
        <translation>Sorgt dafür, dass Berührungen da landen, wo der Finger ist.</translation>
    </message>
    <message>
        <source>Check of the calibration</source>
        <translation>Prüfung der Kalibrierung</translation>
    </message>
    <message>
        <source>Five crosses show whether touches land well. If they do not, the old calibration is put back by itself.</source>
        <translation>Fünf Kreuze zeigen, ob Berührungen gut landen. Wenn nicht, wird die alte Kalibrierung von selbst zurückgeschrieben.</translation>
    </message>
    <message>
        <source>Measurement</source>
        <translation>Messung</translation>
    </message>
    <message>
        <source>Proves how good the panel is, in millimetres against limits.</source>
        <translation>Belegt, wie gut das Panel ist, in Millimetern gegen Grenzen.</translation>
    </message>
    <message>
        <source>Report rate</source>
        <translation>Melderate</translation>
    </message>
    <message>
        <source>Shows how often the controller reports a touch.</source>
        <translation>Zeigt, wie oft der Controller eine Berührung meldet.</translation>
    </message>
    <message>
        <source>Verdict</source>
        <translation>Urteil</translation>
    </message>
    <message>
        <source>Judges all that was found.</source>
        <translation>Beurteilt alles, was gefunden wurde.</translation>
    </message>
    <message>
        <source>Sheet</source>
        <translation>Blatt</translation>
    </message>
    <message>
        <source>Writes what you hand over.</source>
        <translation>Schreibt, was Sie übergeben.</translation>
    </message>
    <message>
        <source>worst of %1: %2</source>
        <translation>schlechteste von %1: %2</translation>
    </message>
    <message>
        <source>Panel %1</source>
        <translation>Panel %1</translation>
    </message>
    <message>
        <source>order %1</source>
        <translation>Auftrag %1</translation>
    </message>
    <message>
        <source>Controller</source>
        <translation>Controller</translation>
    </message>
    <message>
        <source>%1, %2, firmware %3</source>
        <translation>%1, %2, Firmware %3</translation>
    </message>
    <message>
        <source>Active area</source>
        <translation>Aktive Fläche</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>Driver</source>
        <translation>Treiber</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Notiz</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Operator</source>
        <translation>Bearbeiter</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>%1 a second, median interval %2 ms, longest %3 ms</source>
        <translation>%1 je Sekunde, mittlerer Abstand %2 ms, längster %3 ms</translation>
    </message>
    <message>
        <source>%1 targets, checked with 5 others</source>
        <translation>%1 Ziele, mit 5 anderen geprüft</translation>
    </message>
    <message>
        <source>%1 targets, not checked</source>
        <translation>%1 Ziele, nicht geprüft</translation>
    </message>
    <message>
        <source>%1 targets; the check failed, and the old one was put back</source>
        <translation>%1 Ziele; die Prüfung misslang, und die alte Kalibrierung wurde zurückgeschrieben</translation>
    </message>
    <message>
        <source>%1 targets; the check failed</source>
        <translation>%1 Ziele; die Prüfung misslang</translation>
    </message>
    <message>
        <source>Calibrated</source>
        <translation>Kalibriert</translation>
    </message>
    <message>
        <source>Parameters before</source>
        <translation>Parameter vorher</translation>
    </message>
    <message>
        <source>Parameters after</source>
        <translation>Parameter nachher</translation>
    </message>
    <message>
        <source>Touches miss</source>
        <translation>Abweichung</translation>
    </message>
    <message>
        <source>Advice</source>
        <translation>Rat</translation>
    </message>
    <message>
        <source>Likely cause</source>
        <translation>Wahrscheinliche Ursache</translation>
    </message>
    <message>
        <source>not done</source>
        <translation>nicht erledigt</translation>
    </message>
    <message>
        <source>skipped: %1</source>
        <translation>übersprungen: %1</translation>
    </message>
    <message>
        <source>done</source>
        <translation>erledigt</translation>
    </message>
    <message>
        <source>done %1 times</source>
        <translation>%1-mal erledigt</translation>
    </message>
    <message>
        <source>%1 (&quot;%2&quot;)</source>
        <translation>%1 („%2“)</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>Repeated</source>
        <translation>Wiederholt</translation>
    </message>
    <message>
        <source>Skipped</source>
        <translation>Übersprungen</translation>
    </message>
    <message>
        <source>Nominal</source>
        <translation>Nominell</translation>
    </message>
    <message>
        <source>all lengths: 96 pixels are taken as an inch</source>
        <translation>alle Längen: 96 Pixel gelten als ein Zoll</translation>
    </message>
    <message>
        <source>The calibration did not pass its check.</source>
        <translation>Die Kalibrierung hat ihre Prüfung nicht bestanden.</translation>
    </message>
    <message>
        <source>The panel was not measured.</source>
        <translation>Das Panel wurde nicht gemessen.</translation>
    </message>
    <message>
        <source>The calibration was not checked.</source>
        <translation>Die Kalibrierung wurde nicht geprüft.</translation>
    </message>
    <message>
        <source>Settings are not as this use wants them.</source>
        <translation>Einstellungen sind nicht so, wie dieser Zweck sie verlangt.</translation>
    </message>
    <message>
        <source>Jan</source>
        <translation>Jan.</translation>
    </message>
    <message>
        <source>Feb</source>
        <translation>Feb.</translation>
    </message>
    <message>
        <source>Mar</source>
        <translation>März</translation>
    </message>
    <message>
        <source>Apr</source>
        <translation>Apr.</translation>
    </message>
    <message>
        <source>May</source>
        <translation>Mai</translation>
    </message>
    <message>
        <source>Jun</source>
        <translation>Juni</translation>
    </message>
    <message>
        <source>Jul</source>
        <translation>Juli</translation>
    </message>
    <message>
        <source>Aug</source>
        <translation>Aug.</translation>
    </message>
    <message>
        <source>Sep</source>
        <translation>Sept.</translation>
    </message>
    <message>
        <source>Oct</source>
        <translation>Okt.</translation>
    </message>
    <message>
        <source>Nov</source>
        <translation>Nov.</translation>
    </message>
    <message>
        <source>Dec</source>
        <translation>Dez.</translation>
    </message>
    <message>
        <source>%1 (%2 ×)</source>
        <translation>%1 (%2 ×)</translation>
    </message>
    <message>
        <source>line %1 (%2 ×, &quot;my hand&quot;)</source>
        <translation>Linie %1 (%2 ×, „meine Hand“)</translation>
    </message>
    <message>
        <source>%1 %2 to %3 (%4)</source>
        <translation>%1 %2 bis %3 (%4)</translation>
    </message>
    <message>
        <source>Something is missing. Repeat this step to go on with it.</source>
        <translation>Etwas fehlt. Wiederholen Sie diesen Schritt, um ihn fortzusetzen.</translation>
    </message>
    <message>
        <source>the controller&apos;s name</source>
        <translation>der Name des Controllers</translation>
    </message>
    <message>
        <source>its firmware</source>
        <translation>seine Firmware</translation>
    </message>
    <message>
        <source>its unit type</source>
        <translation>sein Gerätetyp</translation>
    </message>
    <message>
        <source>its parameters</source>
        <translation>seine Parameter</translation>
    </message>
    <message>
        <source>settings: %1</source>
        <translation>Einstellungen: %1</translation>
    </message>
    <message>
        <source>something else</source>
        <translation>etwas anderes</translation>
    </message>
    <message>
        <source>nothing of that name</source>
        <translation>nichts dieses Namens</translation>
    </message>
    <message>
        <source>where its touches miss</source>
        <translation>wo seine Berührungen danebenliegen</translation>
    </message>
    <message>
        <source>its noise</source>
        <translation>sein Rauschen</translation>
    </message>
    <message>
        <source>its dead spots</source>
        <translation>seine toten Stellen</translation>
    </message>
    <message>
        <source>how often it reports</source>
        <translation>wie oft er meldet</translation>
    </message>
    <message>
        <source>and %1 more places</source>
        <translation>und %1 weitere Stellen</translation>
    </message>
    <message>
        <source>%1 is %2, but comes to %3</source>
        <translation>%1 ist %2, ergibt sich aber zu %3</translation>
    </message>
    <message>
        <source>a hash and a name that stands once</source>
        <translation>eine Prüfsumme und ein Name, der einmal vorkommt</translation>
    </message>
    <message>
        <source>%1 was added: the manifest does not name it</source>
        <translation>%1 wurde hinzugefügt: Das Verzeichnis der Prüfsummen nennt die Datei nicht</translation>
    </message>
    <message>
        <source>%1 was changed: its hash is another</source>
        <translation>%1 wurde geändert: Die Prüfsumme ist eine andere</translation>
    </message>
    <message>
        <source>%1 was removed</source>
        <translation>%1 wurde entfernt</translation>
    </message>
    <message>
        <source>%1 is not what the run and its use come to</source>
        <translation>%1 ist nicht, was sich aus der Inbetriebnahme und ihrem Zweck ergibt</translation>
    </message>
    <message>
        <source>sheet.html is of another version or language: only its hash was checked</source>
        <translation>sheet.html stammt aus einer anderen Version oder Sprache: Nur die Prüfsumme wurde geprüft</translation>
    </message>
    <message>
        <source>sheet.html is not what the samples come to</source>
        <translation>sheet.html ist nicht, was sich aus den Messpunkten ergibt</translation>
    </message>
    <message>
        <source>sheet.pdf: only its hash was checked</source>
        <translation>sheet.pdf: Nur die Prüfsumme wurde geprüft</translation>
    </message>
    <message>
        <source>a folder that can be read to its end</source>
        <translation>ein Ordner, der sich bis zu seinem Ende lesen lässt</translation>
    </message>
    <message>
        <source>simulated</source>
        <translation>simuliert</translation>
    </message>
    <message>
        <source>The touch panel is switched off: it reports no touch.</source>
        <translation>Das Touchpanel ist ausgeschaltet: Es meldet keine Berührung.</translation>
    </message>
    <message>
        <source>Other figures, all within their limits</source>
        <translation>Weitere Werte, alle innerhalb ihrer Grenzen</translation>
    </message>
    <message>
        <source>done before</source>
        <translation>schon erledigt</translation>
    </message>
    <message>
        <source>not ordered</source>
        <translation>nicht beauftragt</translation>
    </message>
    <message>
        <source>not possible here</source>
        <translation>hier nicht möglich</translation>
    </message>
    <message>
        <source>no time</source>
        <translation>keine Zeit</translation>
    </message>
    <message>
        <source>5 targets suit most panels: they also correct a tilted one.</source>
        <translation>5 Ziele passen für die meisten Panels: Sie korrigieren auch ein schief sitzendes.</translation>
    </message>
    <message>
        <source>3 targets are enough for large buttons, and also correct a tilted panel.</source>
        <translation>3 Ziele genügen für große Schaltflächen und korrigieren auch ein schief sitzendes Panel.</translation>
    </message>
    <message>
        <source>9 targets are the most accurate: writing with a pen needs that.</source>
        <translation>9 Ziele sind am genauesten: Das Schreiben mit einem Stift braucht das.</translation>
    </message>
    <message>
        <source>%1 targets suit this panel best. According to its measurement of %2, touches then miss by at most %3.</source>
        <translation>%1 Ziele passen am besten zu diesem Panel. Nach seiner Messung vom %2 liegen Berührungen dann höchstens %3 daneben.</translation>
    </message>
    <message>
        <source>%1 leaves open: %2. There the simulation is as usual.</source>
        <translation>%1 lässt offen: %2. Dort ist die Simulation wie sonst.</translation>
    </message>
    <message>
        <source>the folder or the bundle of a commissioning</source>
        <translation>der Ordner oder das Bündel einer Inbetriebnahme</translation>
    </message>
    <message>
        <source>en</source>
        <translation>de</translation>
    </message>
    <message>
        <source>Simulated</source>
        <translation>Simuliert</translation>
    </message>
    <message>
        <source>controller and panel: no real one was touched</source>
        <translation>Controller und Panel: keins war echt</translation>
    </message>
    <message>
        <source>for &quot;%1&quot;, simulated</source>
        <translation>für „%1“, simuliert</translation>
    </message>
    <message>
        <source>the system&apos;s temporary folder</source>
        <translation>der Ordner des Systems für Vorübergehendes</translation>
    </message>
    <message>
        <source>a folder</source>
        <translation>ein Ordner</translation>
    </message>
    <message>
        <source>a folder for this user alone</source>
        <translation>ein Ordner für diesen Benutzer allein</translation>
    </message>
</context>
<context>
    <name>debugger</name>
    <message>
        <source>Searching COM1 and COM2 for a controller …</source>
        <translation>COM1 und COM2 werden nach einem Controller durchsucht …</translation>
    </message>
    <message>
        <source>A controller answers on COM%1.</source>
        <translation>An COM%1 antwortet ein Controller.</translation>
    </message>
    <message>
        <source>No controller answers on COM1 or COM2.</source>
        <translation>Weder an COM1 noch an COM2 antwortet ein Controller.</translation>
    </message>
    <message>
        <source>%1 is open, %2.</source>
        <translation>%1 ist offen, %2.</translation>
    </message>
    <message>
        <source>%1 is closed.</source>
        <translation>%1 ist geschlossen.</translation>
    </message>
    <message>
        <source>Damaged bytes: %1.</source>
        <translation>Beschädigte Bytes: %1.</translation>
    </message>
    <message>
        <source>Recording to %1</source>
        <translation>Aufzeichnung in %1</translation>
    </message>
    <message>
        <source>The recording broke off.</source>
        <translation>Die Aufzeichnung brach ab.</translation>
    </message>
    <message>
        <source>The recording has ended.</source>
        <translation>Die Aufzeichnung ist beendet.</translation>
    </message>
    <message>
        <source>%1 holds nothing that came from a controller.</source>
        <translation>%1 enthält nichts, was von einem Controller kam.</translation>
    </message>
    <message>
        <source>Replaying %1</source>
        <translation>Wiedergabe von %1</translation>
    </message>
    <message>
        <source>The replay broke off.</source>
        <translation>Die Wiedergabe ist abgebrochen.</translation>
    </message>
    <message>
        <source>The replay has ended.</source>
        <translation>Die Wiedergabe ist beendet.</translation>
    </message>
    <message>
        <source>COM%1 is closed: no touches will be drawn. To mend that, leave the drawing and press &quot;Open port&quot;, or replay a recording.</source>
        <translation>COM%1 ist geschlossen: es werden keine Berührungen gezeichnet. Verlassen Sie dazu die Zeichnung und drücken Sie „Port öffnen“, oder spielen Sie eine Aufzeichnung ab.</translation>
    </message>
    <message>
        <source>The command was not sent: the line takes no bytes. Look at the cable and at what holds the controller up, then try again.</source>
        <translation>Der Befehl wurde nicht gesendet: die Leitung nimmt keine Bytes an. Prüfen Sie das Kabel und was den Controller aufhält, und versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>The driver has released its port.</source>
        <translation>Der Treiber hat seinen Port freigegeben.</translation>
    </message>
    <message>
        <source>The driver has not released the port of %1.</source>
        <translation>Der Treiber hat den Port von %1 nicht freigegeben.</translation>
    </message>
    <message>
        <source>Asking on COM%1 …</source>
        <translation>Frage an COM%1 …</translation>
    </message>
    <message>
        <source>Of the bytes that came, %1 were damaged on the line (parity, stop bit or break).</source>
        <translation>Von den angekommenen Bytes wurden %1 auf der Leitung beschädigt (Parität, Stoppbit oder Unterbrechung).</translation>
    </message>
    <message>
        <source>Bytes sent: %1, received: %2.</source>
        <translation>Bytes gesendet: %1, empfangen: %2.</translation>
    </message>
    <message>
        <source>The port has no %1.</source>
        <translation>Der Port hat kein %1.</translation>
    </message>
    <message>
        <source>%1 is on.</source>
        <translation>%1 ist an.</translation>
    </message>
    <message>
        <source>%1 is off.</source>
        <translation>%1 ist aus.</translation>
    </message>
    <message>
        <source>A break was sent.</source>
        <translation>Ein Break wurde gesendet.</translation>
    </message>
    <message>
        <source>The port sends no break.</source>
        <translation>Der Port sendet kein Break.</translation>
    </message>
    <message>
        <source>Searching all ports for a controller …</source>
        <translation>Alle Anschlüsse werden nach einem Controller abgesucht …</translation>
    </message>
    <message>
        <source>%1 has no number. Start the program with --com N=%1.</source>
        <translation>%1 hat keine Nummer. Starten Sie das Programm mit --com N=%1.</translation>
    </message>
    <message>
        <source>A controller answers on COM%1, %2.</source>
        <translation>Ein Controller antwortet an COM%1, %2.</translation>
    </message>
    <message>
        <source>No controller answers on any port that can be opened.</source>
        <translation>An keinem Anschluss, der sich öffnen lässt, antwortet ein Controller.</translation>
    </message>
    <message>
        <source>COM%1 has gone. %2</source>
        <translation>COM%1 ist weg. %2</translation>
    </message>
    <message>
        <source>COM%1 is there again. %2</source>
        <translation>COM%1 ist wieder da. %2</translation>
    </message>
    <message>
        <source>Asking on COM%1, %2 …</source>
        <translation>Frage an COM%1, %2 …</translation>
    </message>
    <message>
        <source>8th bit set: %1</source>
        <translation>8. Bit gesetzt: %1</translation>
    </message>
    <message>
        <source>Byte %1 of %2: decimal %3.</source>
        <translation>Byte %1 von %2: dezimal %3.</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Dir</source>
        <translation>Rtg</translation>
    </message>
    <message>
        <source>Hexadecimal</source>
        <translation>Hexadezimal</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>Feld</translation>
    </message>
    <message>
        <source>COM%1 is there again as COM%2 (%3). %4</source>
        <translation>COM%1 ist als COM%2 (%3) wieder da. %4</translation>
    </message>
    <message>
        <source>The search was ended before all was asked.</source>
        <translation>Die Suche wurde beendet, bevor alles gefragt war.</translation>
    </message>
    <message>
        <source>Asking on COM%1, %2 … (%3 of %4)</source>
        <translation>Frage auf COM%1, %2 … (%3 von %4)</translation>
    </message>
    <message>
        <source>it has no number; --com N=DEVICE gives it one</source>
        <translation>er hat keine Nummer; --com N=GERÄT gibt ihm eine</translation>
    </message>
    <message>
        <source>%1 was not asked: %2.</source>
        <translation>%1 wurde nicht gefragt: %2.</translation>
    </message>
    <message>
        <source>Byte %1 of %2: begin of message.</source>
        <translation>Byte %1 von %2: Anfang der Nachricht.</translation>
    </message>
    <message>
        <source>Byte %1 of %2: end of message.</source>
        <translation>Byte %1 von %2: Ende der Nachricht.</translation>
    </message>
    <message>
        <source>Byte %1 of %2: command.</source>
        <translation>Byte %1 von %2: Befehl.</translation>
    </message>
    <message>
        <source>Byte %1 of %2: data.</source>
        <translation>Byte %1 von %2: Daten.</translation>
    </message>
    <message>
        <source>Decimal %1.</source>
        <translation>Dezimal %1.</translation>
    </message>
</context>
<context>
    <name>discovery</name>
    <message>
        <source>first model</source>
        <translation>erstes Modell</translation>
    </message>
    <message>
        <source>model variant %1</source>
        <translation>Modellvariante %1</translation>
    </message>
</context>
<context>
    <name>doctor</name>
    <message>
        <source>No driver library is bound.</source>
        <translation>Es ist keine Treiberbibliothek eingebunden.</translation>
    </message>
    <message>
        <source>Driver library %1</source>
        <translation>Treiberbibliothek %1</translation>
    </message>
    <message>
        <source>Driver library %1, %2 bytes</source>
        <translation>Treiberbibliothek %1, %2 Bytes</translation>
    </message>
    <message>
        <source>the driver cannot open the controller</source>
        <translation>der Treiber kann den Controller nicht öffnen</translation>
    </message>
    <message>
        <source>the trace cannot be read</source>
        <translation>der Mitschnitt ist nicht lesbar</translation>
    </message>
    <message>
        <source>the controller does not answer</source>
        <translation>der Controller antwortet nicht</translation>
    </message>
    <message>
        <source>reading %1</source>
        <translation>%1 wird gelesen</translation>
    </message>
    <message>
        <source>there is no controller</source>
        <translation>es gibt keinen Controller</translation>
    </message>
    <message>
        <source>This part is missing: %1.</source>
        <translation>Dieser Teil fehlt: %1.</translation>
    </message>
    <message>
        <source>The diagnostics are not saved: %1.</source>
        <translation>Die Diagnose ist nicht gespeichert: %1.</translation>
    </message>
    <message>
        <source>The diagnostics are saved in %1.</source>
        <translation>Die Diagnose ist in %1 gespeichert.</translation>
    </message>
    <message>
        <source>Missing, with the reason in their place: %1.</source>
        <translation>Es fehlen, mit dem Grund an ihrer Stelle: %1.</translation>
    </message>
    <message>
        <source>The diagnostics file will contain %1: what was found, the versions, the settings and parameters of each controller and, while a trace is written, its last 16 MB, with all that was said to and by them. Your home folder and this computer&apos;s name are left out.</source>
        <translation>Die Diagnosedatei wird enthalten: %1, also was gefunden wurde, die Versionen, Einstellungen und Parameter jedes Controllers und, solange ein Mitschnitt geschrieben wird, dessen letzte 16 MB mit allem, was mit ihnen ausgetauscht wurde. Ihr persönlicher Ordner und der Name dieses Rechners werden weggelassen.</translation>
    </message>
    <message>
        <source>The installation is incomplete: install TouchUtility again.</source>
        <translation>Die Installation ist unvollständig: Installieren Sie TouchUtility erneut.</translation>
    </message>
    <message>
        <source>The library in %1 is no touch driver: install the touch driver of your controller.</source>
        <translation>Die Bibliothek in %1 ist kein Touch-Treiber: Installieren Sie den Touch-Treiber Ihres Controllers.</translation>
    </message>
    <message>
        <source>Install the touch driver of your controller, or name its library with --driver PATH.</source>
        <translation>Installieren Sie den Touch-Treiber Ihres Controllers, oder nennen Sie seine Bibliothek mit --driver PATH.</translation>
    </message>
    <message>
        <source>Controllers cannot be found.</source>
        <translation>Controller können nicht gefunden werden.</translation>
    </message>
    <message>
        <source>No controller can be worked with.</source>
        <translation>Mit keinem Controller kann gearbeitet werden.</translation>
    </message>
    <message>
        <source>No command reaches a controller: it cannot be asked what it is, calibrated, reset or given parameters.</source>
        <translation>Kein Befehl erreicht einen Controller: Er kann nicht nach seiner Kennung gefragt, kalibriert, neu gestartet oder mit Parametern versehen werden.</translation>
    </message>
    <message>
        <source>The serial debugger and the search of the COM ports do not work, nor does &quot;Release comport and Exit&quot;.</source>
        <translation>Der serielle Debugger und die Suche an den COM-Ports funktionieren nicht, ebenso wenig das Beenden mit Freigabe des COM-Ports.</translation>
    </message>
    <message>
        <source>The settings that these operations make cannot be changed.</source>
        <translation>Die Einstellungen, die diese Operationen vornehmen, können nicht geändert werden.</translation>
    </message>
    <message>
        <source>&quot;Confirm&quot; does not work: double click and right click keep their timing.</source>
        <translation>„Übernehmen“ funktioniert nicht: Die Zeiten für Doppelklick und Rechtsklick bleiben, wie sie sind.</translation>
    </message>
    <message>
        <source>The screen cannot be calibrated.</source>
        <translation>Der Bildschirm kann nicht kalibriert werden.</translation>
    </message>
    <message>
        <source>No monitor can be assigned to the panel.</source>
        <translation>Dem Panel kann kein Monitor zugeordnet werden.</translation>
    </message>
    <message>
        <source>The driver library is %1; it has all operations.</source>
        <translation>Die Treiberbibliothek ist %1; sie hat alle Operationen.</translation>
    </message>
    <message>
        <source>The driver library %1 lacks %2.</source>
        <translation>Der Treiberbibliothek %1 fehlt %2.</translation>
    </message>
    <message>
        <source>Install a newer touch driver.</source>
        <translation>Installieren Sie einen neueren Touch-Treiber.</translation>
    </message>
    <message>
        <source>Without the touch driver no controller can be found, set up or calibrated.</source>
        <translation>Ohne den Touch-Treiber kann kein Controller gefunden, eingestellt oder kalibriert werden.</translation>
    </message>
    <message>
        <source>%1 was looked for in %2.</source>
        <translation>%1 wurde hier gesucht: %2.</translation>
    </message>
    <message>
        <source>It is never taken from the current folder, where anybody may have put it.</source>
        <translation>Sie wird nie aus dem aktuellen Ordner genommen, in den sie jeder gelegt haben kann.</translation>
    </message>
    <message>
        <source>The simulated driver is in use.</source>
        <translation>Der simulierte Treiber ist in Gebrauch.</translation>
    </message>
    <message>
        <source>Its controllers are simulated; real ones are not reached.</source>
        <translation>Seine Controller sind simuliert; echte werden nicht erreicht.</translation>
    </message>
    <message>
        <source>For a real controller start the program on its touch driver.</source>
        <translation>Starten Sie das Programm für einen echten Controller mit dessen Touch-Treiber.</translation>
    </message>
    <message>
        <source>unit type %1</source>
        <translation>Typ %1</translation>
    </message>
    <message>
        <source>firmware %1</source>
        <translation>Firmware %1</translation>
    </message>
    <message>
        <source>asking %1</source>
        <translation>%1 wird gefragt</translation>
    </message>
    <message>
        <source>%1 answers%2.</source>
        <translation>%1 antwortet%2.</translation>
    </message>
    <message>
        <source>%1 is known to the driver, but does not answer.</source>
        <translation>Der Treiber kennt %1, aber das Gerät antwortet nicht.</translation>
    </message>
    <message>
        <source>Nothing can be read from it or changed in it.</source>
        <translation>Von ihm kann nichts gelesen und an ihm nichts geändert werden.</translation>
    </message>
    <message>
        <source>Check its cable and power; then search the COM ports for it.</source>
        <translation>Prüfen Sie Kabel und Stromversorgung; durchsuchen Sie dann die COM-Ports danach.</translation>
    </message>
    <message>
        <source>Check its cable and power, then look again.</source>
        <translation>Prüfen Sie Kabel und Stromversorgung, und sehen Sie dann erneut nach.</translation>
    </message>
    <message>
        <source>The driver also knows of %1.</source>
        <translation>Der Treiber kennt außerdem %1.</translation>
    </message>
    <message>
        <source>These are of other makers and are left alone.</source>
        <translation>Diese sind von anderen Herstellern und bleiben unberührt.</translation>
    </message>
    <message>
        <source>The driver knows of no controller.</source>
        <translation>Der Treiber kennt keinen Controller.</translation>
    </message>
    <message>
        <source>There is nothing to work with.</source>
        <translation>Es gibt nichts, womit gearbeitet werden kann.</translation>
    </message>
    <message>
        <source>Check cable and power, then look again. A serial controller may be on another port than the driver believes: search the COM ports for it.</source>
        <translation>Prüfen Sie Kabel und Stromversorgung, und sehen Sie dann erneut nach. Ein serieller Controller kann an einem anderen Port sein, als der Treiber annimmt: Durchsuchen Sie die COM-Ports danach.</translation>
    </message>
    <message>
        <source>No controller was looked for: there is no driver to ask.</source>
        <translation>Es wurde kein Controller gesucht: Es gibt keinen Treiber, der gefragt werden könnte.</translation>
    </message>
    <message>
        <source>The controllers were not asked. %1.</source>
        <translation>Die Controller wurden nicht gefragt. %1.</translation>
    </message>
    <message>
        <source>COM%1: the simulated driver has the simulated controller&apos;s port.</source>
        <translation>COM%1: Den Port des simulierten Controllers hat der simulierte Treiber.</translation>
    </message>
    <message>
        <source>%1: there is no such device.</source>
        <translation>%1: Dieses Gerät gibt es nicht.</translation>
    </message>
    <message>
        <source>No controller can be reached over it.</source>
        <translation>Darüber ist kein Controller erreichbar.</translation>
    </message>
    <message>
        <source>Connect it, or name another one with %1.</source>
        <translation>Schließen Sie es an, oder nennen Sie ein anderes mit %1.</translation>
    </message>
    <message>
        <source>%1, driver %2</source>
        <translation>%1, Treiber %2</translation>
    </message>
    <message>
        <source>%1: this user may not open it.</source>
        <translation>%1: Dieser Benutzer darf den Port nicht öffnen.</translation>
    </message>
    <message>
        <source>A serial controller on it cannot be searched for or talked to without the driver.</source>
        <translation>Ein serieller Controller daran kann ohne den Treiber weder gesucht noch angesprochen werden.</translation>
    </message>
    <message>
        <source>%1: in use by %2.</source>
        <translation>%1: in Gebrauch durch %2.</translation>
    </message>
    <message>
        <source>Only one program at a time can talk to a controller.</source>
        <translation>Mit einem Controller kann immer nur ein Programm sprechen.</translation>
    </message>
    <message>
        <source>Close it before you search the COM ports or open the serial debugger.</source>
        <translation>Schließen Sie es, bevor Sie die COM-Ports durchsuchen oder den seriellen Debugger öffnen.</translation>
    </message>
    <message>
        <source>%1: this user may open it, and no program has it.</source>
        <translation>%1: Dieser Benutzer darf den Port öffnen, und kein Programm benutzt ihn.</translation>
    </message>
    <message>
        <source>%1: this user may open it. Whether another program has it, opening it will tell.</source>
        <translation>%1: Dieser Benutzer darf den Port öffnen. Ob ein anderes Programm ihn benutzt, zeigt sich erst beim Öffnen.</translation>
    </message>
    <message>
        <source>To use it, start with %1.</source>
        <translation>Um den Port zu verwenden, starten Sie mit %1.</translation>
    </message>
    <message>
        <source>This machine has no serial port.</source>
        <translation>Dieser Rechner hat keinen seriellen Port.</translation>
    </message>
    <message>
        <source>Serial controllers need one; USB controllers do not.</source>
        <translation>Serielle Controller brauchen einen, USB-Controller nicht.</translation>
    </message>
    <message>
        <source>For a serial controller connect an adapter.</source>
        <translation>Schließen Sie für einen seriellen Controller einen Adapter an.</translation>
    </message>
    <message>
        <source>Move it away, or name another working folder with --work-dir DIR.</source>
        <translation>Räumen Sie ihn weg, oder nennen Sie einen anderen Arbeitsordner mit --work-dir DIR.</translation>
    </message>
    <message>
        <source>Parameters are not kept before they are changed.</source>
        <translation>Parameter werden nicht gesichert, bevor sie geändert werden.</translation>
    </message>
    <message>
        <source>It is left alone; strokes that are drawn are kept in another one.</source>
        <translation>Er bleibt unberührt; gezeichnete Striche werden in einem anderen aufgehoben.</translation>
    </message>
    <message>
        <source>The working folder %1 can be written.</source>
        <translation>Der Arbeitsordner %1 ist beschreibbar.</translation>
    </message>
    <message>
        <source>The working folder %1 cannot be written: %2.</source>
        <translation>Der Arbeitsordner %1 ist nicht beschreibbar: %2.</translation>
    </message>
    <message>
        <source>Parameters are not kept before they are changed, and results are not saved.</source>
        <translation>Parameter werden vor einer Änderung nicht aufbewahrt, und Ergebnisse werden nicht gespeichert.</translation>
    </message>
    <message>
        <source>Start the program in another folder, or name one with --work-dir DIR.</source>
        <translation>Starten Sie das Programm in einem anderen Ordner, oder nennen Sie einen mit --work-dir DIR.</translation>
    </message>
    <message>
        <source>No display: a shell has none to look at.</source>
        <translation>Keine Anzeige: In einer Shell gibt es keine zu prüfen.</translation>
    </message>
    <message>
        <source>Panels are calibrated on the screen.</source>
        <translation>Panels werden am Bildschirm kalibriert.</translation>
    </message>
    <message>
        <source>The page &quot;Doctor&quot; of touchutility lists the screens.</source>
        <translation>Die Seite „Diagnose“ von touchutility führt die Bildschirme auf.</translation>
    </message>
    <message>
        <source>%1: %2 x %3 pixels at %4 %</source>
        <translation>%1: %2 x %3 Pixel bei %4 %</translation>
    </message>
    <message>
        <source>%1, which is little.</source>
        <translation>%1, das ist wenig.</translation>
    </message>
    <message>
        <source>Some windows may not fit.</source>
        <translation>Manche Fenster passen vielleicht nicht.</translation>
    </message>
    <message>
        <source>Choose a smaller scale.</source>
        <translation>Wählen Sie eine kleinere Skalierung.</translation>
    </message>
    <message>
        <source>%1 is sound.</source>
        <translation>%1 ist in Ordnung.</translation>
    </message>
    <message>
        <source>Mend the file or remove it.</source>
        <translation>Berichtigen oder entfernen Sie die Datei.</translation>
    </message>
    <message>
        <source>Not in the working folder, and not needed: %1.</source>
        <translation>Nicht im Arbeitsordner und nicht nötig: %1.</translation>
    </message>
    <message>
        <source>The controllers are not asked yet.</source>
        <translation>Die Controller sind noch nicht gefragt.</translation>
    </message>
    <message>
        <source>Press &quot;Refresh&quot; to ask each of them what it is.</source>
        <translation>Drücken Sie „Aktualisieren“, um jeden nach seiner Kennung zu fragen.</translation>
    </message>
    <message>
        <source>looking at the ports</source>
        <translation>die Ports werden geprüft</translation>
    </message>
    <message>
        <source>1 problem</source>
        <translation>1 Problem</translation>
    </message>
    <message>
        <source>%1 problems</source>
        <translation>%1 Probleme</translation>
    </message>
    <message>
        <source>1 note</source>
        <translation>1 Hinweis</translation>
    </message>
    <message>
        <source>%1 notes</source>
        <translation>%1 Hinweise</translation>
    </message>
    <message>
        <source>Controllers not asked yet</source>
        <translation>Controller noch nicht gefragt</translation>
    </message>
    <message>
        <source>Nothing is wrong</source>
        <translation>Alles in Ordnung</translation>
    </message>
    <message>
        <source>Next: %1</source>
        <translation>Nächster Schritt: %1</translation>
    </message>
    <message>
        <source>The screen cannot be calibrated with 2 points.</source>
        <translation>Der Bildschirm kann nicht mit 2 Punkten kalibriert werden.</translation>
    </message>
    <message>
        <source>The screen cannot be calibrated with 3, 5 or 9 points.</source>
        <translation>Der Bildschirm kann nicht mit 3, 5 oder 9 Punkten kalibriert werden.</translation>
    </message>
    <message>
        <source>The settings cannot be read, and neither the serial debugger nor the search of the COM ports works.</source>
        <translation>Die Einstellungen können nicht gelesen werden, und weder der serielle Debugger noch die Suche an den COM-Ports funktioniert.</translation>
    </message>
    <message>
        <source>The settings cannot be read, and &quot;Confirm&quot; does not work.</source>
        <translation>Die Einstellungen können nicht gelesen werden, und „Übernehmen“ funktioniert nicht.</translation>
    </message>
    <message>
        <source>Not all settings can be read.</source>
        <translation>Nicht alle Einstellungen können gelesen werden.</translation>
    </message>
    <message>
        <source>The structure of %1 is sound; it was not decoded.</source>
        <translation>Der Aufbau von %1 ist in Ordnung; dekodiert wurde die Datei nicht.</translation>
    </message>
    <message>
        <source>The driver library has %1 bits.</source>
        <translation>Die Treiberbibliothek hat %1 Bit.</translation>
    </message>
    <message>
        <source>Its version is %1.</source>
        <translation>Ihre Version ist %1.</translation>
    </message>
    <message>
        <source>It runs in this program.</source>
        <translation>Sie läuft in diesem Programm.</translation>
    </message>
    <message>
        <source>It runs in a process of its own, %1.</source>
        <translation>Sie läuft in einem eigenen Prozess, %1.</translation>
    </message>
    <message>
        <source>What was being done ended as if the controller did not answer.</source>
        <translation>Was gerade geschah, endete, als ob der Controller nicht antwortete.</translation>
    </message>
    <message>
        <source>Install a newer touch driver if it happens again.</source>
        <translation>Installieren Sie einen neueren Touch-Treiber, wenn es wieder geschieht.</translation>
    </message>
</context>
<context>
    <name>drawings</name>
    <message>
        <source>%1 more cannot be read.</source>
        <translation>%1 weitere sind nicht lesbar.</translation>
    </message>
    <message>
        <source>&quot;Line #&quot; and a stroke&apos;s number</source>
        <translation>„Line #“ und die Nummer eines Strichs</translation>
    </message>
    <message>
        <source>at most %1 strokes in a drawing</source>
        <translation>höchstens %1 Striche in einer Zeichnung</translation>
    </message>
    <message>
        <source>at most %1 samples in a drawing</source>
        <translation>höchstens %1 Messpunkte in einer Zeichnung</translation>
    </message>
    <message>
        <source>more</source>
        <translation>mehr</translation>
    </message>
    <message>
        <source>a file that can be renamed</source>
        <translation>eine umbenennbare Datei</translation>
    </message>
    <message>
        <source>the end of the file after 3001 samples</source>
        <translation>das Ende der Datei nach 3001 Messpunkten</translation>
    </message>
    <message>
        <source>the x of a sample</source>
        <translation>das x eines Messpunkts</translation>
    </message>
    <message>
        <source>a recorded stroke</source>
        <translation>ein aufgezeichneter Strich</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keiner</translation>
    </message>
</context>
<context>
    <name>driver</name>
    <message>
        <source>the system does not say where this program lies</source>
        <translation>das System sagt nicht, wo dieses Programm liegt</translation>
    </message>
    <message>
        <source>The touch driver library lacks the operation %1</source>
        <translation>Der Touch-Treiberbibliothek fehlt die Operation %1</translation>
    </message>
    <message>
        <source>it has none of a touch driver&apos;s operations</source>
        <translation>sie hat keine der Operationen eines Touch-Treibers</translation>
    </message>
    <message>
        <source>The touch driver library %1 cannot be used: %2</source>
        <translation>Die Touch-Treiberbibliothek %1 kann nicht verwendet werden: %2</translation>
    </message>
    <message>
        <source>the loader gave no reason</source>
        <translation>der Lader nannte keinen Grund</translation>
    </message>
    <message>
        <source>the folders of LD_LIBRARY_PATH and those of the system</source>
        <translation>die Ordner aus LD_LIBRARY_PATH und die des Systems</translation>
    </message>
    <message>
        <source>LD_LIBRARY_PATH has an element that leads to the current folder; remove that element, or name the library with --driver</source>
        <translation>LD_LIBRARY_PATH enthält ein Element, das in den aktuellen Ordner führt; entfernen Sie dieses Element, oder nennen Sie die Bibliothek mit --driver</translation>
    </message>
    <message>
        <source>%1 and the system folder</source>
        <translation>%1 und der Systemordner</translation>
    </message>
    <message>
        <source>The trace file %1 cannot be written: %2</source>
        <translation>Die Mitschnittdatei %1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>The trace file %1 ends here: it has reached its limit of %2 bytes</source>
        <translation>Die Trace-Datei %1 endet hier: Sie hat ihre Grenze von %2 Bytes erreicht</translation>
    </message>
    <message>
        <source>The trace file %1 ends early, because it cannot be written on: %2</source>
        <translation>Die Mitschnittdatei %1 endet vorzeitig, weil sie sich nicht weiterschreiben lässt: %2</translation>
    </message>
    <message>
        <source>%1, in which it would run, is missing: install TouchUtility again</source>
        <translation>%1, worin sie liefe, fehlt: Installieren Sie TouchUtility neu</translation>
    </message>
    <message>
        <source>it has %2 bits, and %1, in which it would run, is missing: install the package touchutility-driver32</source>
        <translation>sie hat %2 Bit, und %1, worin sie liefe, fehlt: Installieren Sie das Paket touchutility-driver32</translation>
    </message>
    <message>
        <source>it ended by itself, with status %1</source>
        <translation>er hat sich selbst beendet, mit Status %1</translation>
    </message>
    <message>
        <source>it cannot be ended</source>
        <translation>er lässt sich nicht beenden</translation>
    </message>
    <message>
        <source>its driver host %1 cannot be started: %2</source>
        <translation>ihr Wirtsprogramm %1 kann nicht gestartet werden: %2</translation>
    </message>
    <message>
        <source>exception %1</source>
        <translation>Ausnahme %1</translation>
    </message>
    <message>
        <source>it was ended</source>
        <translation>er wurde beendet</translation>
    </message>
    <message>
        <source>its start</source>
        <translation>seinem Start</translation>
    </message>
    <message>
        <source>it crashed as it was loaded: %1</source>
        <translation>sie ist beim Laden abgestürzt: %1</translation>
    </message>
    <message>
        <source>it did not return as it was loaded</source>
        <translation>sie ist vom Laden nicht zurückgekehrt</translation>
    </message>
    <message>
        <source>it damaged its host: expected %1</source>
        <translation>sie hat ihr Wirtsprogramm beschädigt: erwartet %1</translation>
    </message>
    <message>
        <source>The touch driver %1 crashed in %2: %3.</source>
        <translation>Der Touch-Treiber %1 ist in %2 abgestürzt: %3.</translation>
    </message>
    <message>
        <source>The touch driver %1 did not return from %2 and was ended.</source>
        <translation>Der Touch-Treiber %1 ist nicht aus %2 zurückgekehrt und wurde beendet.</translation>
    </message>
    <message>
        <source>The touch driver %1 damaged its host in %2: expected %3.</source>
        <translation>Der Touch-Treiber %1 hat in %2 sein Wirtsprogramm beschädigt: erwartet %3.</translation>
    </message>
    <message>
        <source>It crashed three times in a row and is not started again by itself. &quot;Refresh&quot; starts it once more.</source>
        <translation>Er ist dreimal hintereinander abgestürzt und wird nicht von selbst wieder gestartet. „Aktualisieren“ startet ihn noch einmal.</translation>
    </message>
    <message>
        <source>its controller did not become that of %1: %2</source>
        <translation>ihr Controller wurde nicht zu dem von %1: %2</translation>
    </message>
</context>
<context>
    <name>files</name>
    <message>
        <source>a folder that TouchUtility has made</source>
        <translation>ein Ordner, den TouchUtility angelegt hat</translation>
    </message>
    <message>
        <source>another one of this name</source>
        <translation>ein anderer dieses Namens</translation>
    </message>
    <message>
        <source>a folder for the user&apos;s files</source>
        <translation>ein Ordner für Dateien des Benutzers</translation>
    </message>
    <message>
        <source>one of the system&apos;s</source>
        <translation>einer des Systems</translation>
    </message>
    <message>
        <source>a place that can be written</source>
        <translation>ein beschreibbarer Ort</translation>
    </message>
    <message>
        <source>a folder of this user&apos;s own</source>
        <translation>ein eigener Ordner dieses Benutzers</translation>
    </message>
    <message>
        <source>a file that can be read</source>
        <translation>eine lesbare Datei</translation>
    </message>
    <message>
        <source>a file of this user&apos;s own</source>
        <translation>eine eigene Datei dieses Benutzers</translation>
    </message>
    <message>
        <source>too many that were left unfinished</source>
        <translation>zu viele unfertig zurückgelassene</translation>
    </message>
    <message>
        <source>a link</source>
        <translation>eine Verknüpfung</translation>
    </message>
    <message>
        <source>a folder</source>
        <translation>ein Ordner</translation>
    </message>
    <message>
        <source>a device or a pipe</source>
        <translation>ein Gerät oder eine Pipe</translation>
    </message>
    <message>
        <source>another user&apos;s file</source>
        <translation>die Datei eines anderen Benutzers</translation>
    </message>
    <message>
        <source>a file that has a second name</source>
        <translation>eine Datei mit einem zweiten Namen</translation>
    </message>
    <message>
        <source>another user&apos;s folder</source>
        <translation>der Ordner eines anderen Benutzers</translation>
    </message>
    <message>
        <source>one that another program has</source>
        <translation>eine, die ein anderes Programm hat</translation>
    </message>
    <message>
        <source>another file in its place</source>
        <translation>eine andere Datei an ihrer Stelle</translation>
    </message>
    <message>
        <source>a file</source>
        <translation>eine Datei</translation>
    </message>
    <message>
        <source>at most %1 bytes</source>
        <translation>höchstens %1 Bytes</translation>
    </message>
    <message>
        <source>more</source>
        <translation>mehr</translation>
    </message>
    <message>
        <source>a device or a pipe, which is not to be replaced</source>
        <translation>ein Gerät oder eine Pipe, die nicht ersetzt werden darf</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>something else of this name</source>
        <translation>etwas anderes dieses Namens</translation>
    </message>
    <message>
        <source>none that this user may open</source>
        <translation>keine, die dieser Benutzer öffnen darf</translation>
    </message>
    <message>
        <source>a read error</source>
        <translation>ein Lesefehler</translation>
    </message>
    <message>
        <source>an empty line</source>
        <translation>eine leere Zeile</translation>
    </message>
    <message>
        <source>%1, line %2</source>
        <translation>%1, Zeile %2</translation>
    </message>
    <message>
        <source>%1: expected %2</source>
        <translation>%1: erwartet: %2</translation>
    </message>
    <message>
        <source>%1: expected %2, found %3</source>
        <translation>%1: erwartet: %2, gefunden: %3</translation>
    </message>
    <message>
        <source>a ZIP archive that is complete</source>
        <translation>ein vollständiges ZIP-Archiv</translation>
    </message>
    <message>
        <source>at most %1 files</source>
        <translation>höchstens %1 Dateien</translation>
    </message>
    <message>
        <source>a ZIP archive whose list of files is whole</source>
        <translation>ein ZIP-Archiv mit unbeschädigter Dateiliste</translation>
    </message>
    <message>
        <source>names of files within it</source>
        <translation>Namen von Dateien, die nicht aus dem Archiv hinausführen</translation>
    </message>
    <message>
        <source>files that are stored or deflated</source>
        <translation>Dateien, die gespeichert oder mit Deflate gepackt sind</translation>
    </message>
    <message>
        <source>files of at most %1 bytes</source>
        <translation>Dateien von höchstens %1 Bytes</translation>
    </message>
    <message>
        <source>each file once</source>
        <translation>jede Datei nur einmal</translation>
    </message>
    <message>
        <source>this file, which is missing</source>
        <translation>diese Datei, die fehlt</translation>
    </message>
    <message>
        <source>a file that is not damaged</source>
        <translation>eine unbeschädigte Datei</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>The touch driver library lacks %1. What needs that was not done.</source>
        <translation>Der Touch-Treiberbibliothek fehlt %1. Was das braucht, wurde nicht ausgeführt.</translation>
    </message>
    <message>
        <source>Searching for controllers …</source>
        <translation>Controller werden gesucht …</translation>
    </message>
    <message>
        <source>This operating system is older than those that the touch driver is made for.</source>
        <translation>Dieses Betriebssystem ist älter als die, für die der Touch-Treiber gemacht ist.</translation>
    </message>
    <message>
        <source>%1 does not answer; %2 was chosen.</source>
        <translation>%1 antwortet nicht; %2 wurde gewählt.</translation>
    </message>
    <message>
        <source>%1 is no longer there; %2 was chosen.</source>
        <translation>%1 ist nicht mehr da; %2 wurde gewählt.</translation>
    </message>
    <message>
        <source>Searching for controllers: asking %1 …</source>
        <translation>Controller werden gesucht: %1 wird gefragt …</translation>
    </message>
    <message>
        <source>Reading the settings of %1 …</source>
        <translation>Die Einstellungen von %1 werden gelesen …</translation>
    </message>
    <message>
        <source>Asking %1 what it is …</source>
        <translation>%1 wird nach der Kennung gefragt …</translation>
    </message>
    <message>
        <source>No controller was found. The page &quot;Doctor&quot; says what is missing.</source>
        <translation>Es wurde kein Controller gefunden. Die Seite „Diagnose“ sagt, was fehlt.</translation>
    </message>
    <message>
        <source>%1 does not answer. Check its cable and power.</source>
        <translation>%1 antwortet nicht. Prüfen Sie Kabel und Stromversorgung.</translation>
    </message>
    <message>
        <source>%1 is ready.</source>
        <translation>%1 ist bereit.</translation>
    </message>
    <message>
        <source>Reading the controller …</source>
        <translation>Der Controller wird gelesen …</translation>
    </message>
    <message>
        <source>Asking the controller who it is …</source>
        <translation>Der Controller wird nach der Kennung gefragt …</translation>
    </message>
    <message>
        <source>Controller information read.</source>
        <translation>Die Controller-Information ist gelesen.</translation>
    </message>
    <message>
        <source>Searching the COM ports …</source>
        <translation>Die COM-Ports werden durchsucht …</translation>
    </message>
    <message>
        <source>Searching the COM ports: COM%1 …</source>
        <translation>Die COM-Ports werden durchsucht: COM%1 …</translation>
    </message>
    <message>
        <source>The search was cancelled.</source>
        <translation>Die Suche wurde abgebrochen.</translation>
    </message>
    <message>
        <source>No COM port could be opened.</source>
        <translation>Kein COM-Port konnte geöffnet werden.</translation>
    </message>
    <message>
        <source>There is no controller to work with.</source>
        <translation>Es ist kein Controller da, mit dem gearbeitet werden könnte.</translation>
    </message>
    <message>
        <source>Calibrating …</source>
        <translation>Kalibrierung läuft …</translation>
    </message>
    <message>
        <source>Waiting for the test to be closed.</source>
        <translation>Ein Test ist geöffnet.</translation>
    </message>
    <message>
        <source>The driver has its port again. &quot;Refresh&quot; (F5) reads the controller anew.</source>
        <translation>Der Treiber hat seinen Port wieder. „Aktualisieren“ (F5) liest den Controller neu.</translation>
    </message>
    <message>
        <source>The serial debugger waits for an answer. Try again when it is through.</source>
        <translation>Der serielle Debugger wartet auf eine Antwort. Versuchen Sie es noch einmal, wenn er fertig ist.</translation>
    </message>
    <message>
        <source>The serial debugger has a serial port. Leave it first with &quot;Quit&quot;.</source>
        <translation>Der serielle Debugger hat einen seriellen Port. Verlassen Sie ihn zuerst mit „Verlassen“.</translation>
    </message>
    <message>
        <source>The serial debugger has the port of %1. Leave it first with &quot;Quit&quot;.</source>
        <translation>Der serielle Debugger hat den Port von %1. Verlassen Sie ihn zuerst mit „Verlassen“.</translation>
    </message>
    <message>
        <source>Locking the controller&apos;s parameters …</source>
        <translation>Die Parameter des Controllers werden gesperrt …</translation>
    </message>
    <message>
        <source>Releasing the COM port …</source>
        <translation>Der COM-Port wird freigegeben …</translation>
    </message>
    <message>
        <source>a file</source>
        <translation>eine Datei</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Its texts replace the built-in ones.</source>
        <translation>Ihre Texte ersetzen die eingebauten.</translation>
    </message>
    <message>
        <source>touchutility does not start with it, and touchctl does nothing more.</source>
        <translation>touchutility startet damit nicht, und touchctl tut nichts weiter.</translation>
    </message>
    <message>
        <source>It adds forms of touch reports.</source>
        <translation>Sie fügt Formen von Berührungsmeldungen hinzu.</translation>
    </message>
    <message>
        <source>Those lines are left out: touch reports of their form are not decoded.</source>
        <translation>Diese Zeilen werden ausgelassen: Berührungsmeldungen ihrer Form werden nicht entschlüsselt.</translation>
    </message>
    <message>
        <source>It is shown in the main window.</source>
        <translation>Sie wird im Hauptfenster angezeigt.</translation>
    </message>
    <message>
        <source>It is not shown.</source>
        <translation>Sie wird nicht angezeigt.</translation>
    </message>
    <message>
        <source>It is the main window&apos;s icon.</source>
        <translation>Sie ist das Symbol des Hauptfensters.</translation>
    </message>
    <message>
        <source>It is shown on &quot;Hide Cursor&quot;.</source>
        <translation>Sie wird bei „Mauszeiger verbergen“ angezeigt.</translation>
    </message>
    <message>
        <source>at most %1 pictures in an icon</source>
        <translation>höchstens %1 Bilder in einem Symbol</translation>
    </message>
    <message>
        <source>at most %1 pixels</source>
        <translation>höchstens %1 Pixel</translation>
    </message>
    <message>
        <source>at most %1 scans of as many pixels</source>
        <translation>höchstens %1 Durchgänge bei so vielen Pixeln</translation>
    </message>
    <message>
        <source>a picture</source>
        <translation>ein Bild</translation>
    </message>
    <message>
        <source>a whole picture</source>
        <translation>ein vollständiges Bild</translation>
    </message>
    <message>
        <source>one that is cut off</source>
        <translation>ein abgeschnittenes</translation>
    </message>
    <message>
        <source>&amp;Offset</source>
        <translation>&amp;Versatz</translation>
    </message>
    <message>
        <source>Touches land too far right; calibration fixes this.</source>
        <translation>Berührungen landen zu weit rechts; eine Kalibrierung behebt das.</translation>
    </message>
    <message>
        <source>S&amp;kew</source>
        <translation>S&amp;chiefe</translation>
    </message>
    <message>
        <source>Vertical lines lean; calibration with 3 or more points fixes this.</source>
        <translation>Senkrechte Linien neigen sich; eine Kalibrierung mit 3 oder mehr Punkten behebt es.</translation>
    </message>
    <message>
        <source>Bo&amp;w</source>
        <translation>Wölb&amp;ung</translation>
    </message>
    <message>
        <source>Lines near the edges bend inwards; calibration cannot correct this.</source>
        <translation>Linien am Rand biegen sich nach innen; keine Kalibrierung behebt es.</translation>
    </message>
    <message>
        <source>Lines tremble; calibration cannot correct this.</source>
        <translation>Linien zittern; keine Kalibrierung behebt es.</translation>
    </message>
    <message>
        <source>A strip of the panel doesn&apos;t respond: the sensor is broken there.</source>
        <translation>Ein Streifen des Panels reagiert nicht: Dort ist der Sensor defekt.</translation>
    </message>
    <message>
        <source>Noi&amp;se</source>
        <translation>&amp;Rauschen</translation>
    </message>
    <message>
        <source>Dead st&amp;rip</source>
        <translation>Toter &amp;Streifen</translation>
    </message>
    <message>
        <source>The main window is busy. Try again when it is through.</source>
        <translation>Das Hauptfenster ist beschäftigt. Versuchen Sie es noch einmal, wenn es fertig ist.</translation>
    </message>
    <message>
        <source>a picture without compressed text</source>
        <translation>ein Bild ohne komprimierten Text</translation>
    </message>
    <message>
        <source>a chunk %1</source>
        <translation>ein Abschnitt %1</translation>
    </message>
    <message>
        <source>at most %1 colour profiles</source>
        <translation>höchstens %1 Farbprofile</translation>
    </message>
    <message>
        <source>at most %1 bytes besides the pixels</source>
        <translation>höchstens %1 Bytes neben den Pixeln</translation>
    </message>
    <message>
        <source>Checking the calibration …</source>
        <translation>Die Kalibrierung wird geprüft …</translation>
    </message>
    <message>
        <source>Commissioning …</source>
        <translation>Inbetriebnahme …</translation>
    </message>
</context>
<context>
    <name>measure</name>
    <message>
        <source>Touches are shifted as a whole.</source>
        <translation>Berührungen sind insgesamt verschoben.</translation>
    </message>
    <message>
        <source>Calibrate.</source>
        <translation>Kalibrieren Sie.</translation>
    </message>
    <message>
        <source>Touches are spread out or pressed together.</source>
        <translation>Berührungen sind gedehnt oder gestaucht.</translation>
    </message>
    <message>
        <source>The panel lies aslant on the screen.</source>
        <translation>Das Panel liegt schräg auf dem Bildschirm.</translation>
    </message>
    <message>
        <source>Calibrate with 3 targets or more.</source>
        <translation>Kalibrieren Sie mit 3 Zielen oder mehr.</translation>
    </message>
    <message>
        <source>Touches are turned or mirrored.</source>
        <translation>Berührungen sind gedreht oder gespiegelt.</translation>
    </message>
    <message>
        <source>Set the rotation, or turn the plug of the sensor, and calibrate.</source>
        <translation>Stellen Sie die Drehung ein, oder drehen Sie den Stecker des Sensors, und kalibrieren Sie.</translation>
    </message>
    <message>
        <source>X and Y are exchanged.</source>
        <translation>X und Y sind vertauscht.</translation>
    </message>
    <message>
        <source>Exchange the wires of X and Y, and calibrate.</source>
        <translation>Tauschen Sie die Adern von X und Y, und kalibrieren Sie.</translation>
    </message>
    <message>
        <source>The sheet is bowed: straight lines become bent.</source>
        <translation>Die Folie ist gewölbt: Gerade Linien werden krumm.</translation>
    </message>
    <message>
        <source>No calibration mends that. See what it leaves, or replace the sensor.</source>
        <translation>Das behebt keine Kalibrierung. Prüfen Sie, was sie übrig lässt, oder ersetzen Sie den Sensor.</translation>
    </message>
    <message>
        <source>Touches tremble.</source>
        <translation>Berührungen zittern.</translation>
    </message>
    <message>
        <source>Check power supply, cable and earth, and measure again.</source>
        <translation>Prüfen Sie Netzteil, Kabel und Erdung, und messen Sie erneut.</translation>
    </message>
    <message>
        <source>A strip of the sensor feels no touch.</source>
        <translation>Ein Streifen des Sensors spürt keine Berührung.</translation>
    </message>
    <message>
        <source>Replace the sensor.</source>
        <translation>Ersetzen Sie den Sensor.</translation>
    </message>
    <message>
        <source>Touches jump at a line: the sheet is cracked.</source>
        <translation>Berührungen springen an einer Linie: Die Folie ist gerissen.</translation>
    </message>
    <message>
        <source>Touches wander while time passes.</source>
        <translation>Berührungen wandern mit der Zeit.</translation>
    </message>
    <message>
        <source>Let it warm up, check supply and plugs, and measure again.</source>
        <translation>Lassen Sie das Gerät warm werden, prüfen Sie Versorgung und Stecker, und messen Sie erneut.</translation>
    </message>
    <message>
        <source>The panel does not tell X from Y: wrong wires.</source>
        <translation>Das Panel unterscheidet X nicht von Y: falsche Adern.</translation>
    </message>
    <message>
        <source>Check the order of the sensor&apos;s wires.</source>
        <translation>Prüfen Sie die Reihenfolge der Adern des Sensors.</translation>
    </message>
    <message>
        <source>Each line errs in another way, as hands do.</source>
        <translation>Jede Linie irrt anders, wie eine Hand es tut.</translation>
    </message>
    <message>
        <source>Draw again, slowly and along a ruler.</source>
        <translation>Zeichnen Sie erneut, langsam und an einem Lineal.</translation>
    </message>
    <message>
        <source>to the right</source>
        <translation>nach rechts</translation>
    </message>
    <message>
        <source>downwards</source>
        <translation>nach unten</translation>
    </message>
    <message>
        <source>in x, at the edge</source>
        <translation>in X, am Rand</translation>
    </message>
    <message>
        <source>in y, at the edge</source>
        <translation>in Y, am Rand</translation>
    </message>
    <message>
        <source>upright lines, at their ends</source>
        <translation>senkrechte Linien, an ihren Enden</translation>
    </message>
    <message>
        <source>level lines, at their ends</source>
        <translation>waagerechte Linien, an ihren Enden</translation>
    </message>
    <message>
        <source>bent by up to</source>
        <translation>gekrümmt um bis zu</translation>
    </message>
    <message>
        <source>during a resting touch</source>
        <translation>während einer ruhenden Berührung</translation>
    </message>
    <message>
        <source>while the lines were drawn</source>
        <translation>während des Zeichnens der Linien</translation>
    </message>
    <message>
        <source>RMS at rest</source>
        <translation>RMS in Ruhe</translation>
    </message>
    <message>
        <source>RMS on lines</source>
        <translation>RMS auf Linien</translation>
    </message>
    <message>
        <source>from the upper edge</source>
        <translation>vom oberen Rand</translation>
    </message>
    <message>
        <source>from the left edge</source>
        <translation>vom linken Rand</translation>
    </message>
    <message>
        <source>wide</source>
        <translation>breit</translation>
    </message>
    <message>
        <source>lines with a gap there</source>
        <translation>Linien mit einer Lücke dort</translation>
    </message>
    <message>
        <source>of both directions told apart</source>
        <translation>Unterscheidung beider Richtungen</translation>
    </message>
    <message>
        <source>x follows x by</source>
        <translation>X folgt X zu</translation>
    </message>
    <message>
        <source>y follows y by</source>
        <translation>Y folgt Y zu</translation>
    </message>
    <message>
        <source>jump</source>
        <translation>Sprung</translation>
    </message>
    <message>
        <source>RMS that differs from line to line</source>
        <translation>RMS, der sich von Linie zu Linie unterscheidet</translation>
    </message>
    <message>
        <source>straightness</source>
        <translation>Geradheit</translation>
    </message>
    <message>
        <source>straightness, RMS</source>
        <translation>Geradheit, RMS</translation>
    </message>
    <message>
        <source>offset</source>
        <translation>Versatz</translation>
    </message>
    <message>
        <source>tilt, end to end</source>
        <translation>Neigung, von Ende zu Ende</translation>
    </message>
    <message>
        <source>scale, at the edge</source>
        <translation>Maßstab, am Rand</translation>
    </message>
    <message>
        <source>off the guide, centre</source>
        <translation>neben der Führung, Mitte</translation>
    </message>
    <message>
        <source>off the guide, edge zone</source>
        <translation>neben der Führung, Randzone</translation>
    </message>
    <message>
        <source>scatter, RMS</source>
        <translation>Streuung, RMS</translation>
    </message>
    <message>
        <source>hysteresis</source>
        <translation>Hysterese</translation>
    </message>
    <message>
        <source>largest gap</source>
        <translation>größte Lücke</translation>
    </message>
    <message>
        <source>far off the guide</source>
        <translation>weit neben der Führung</translation>
    </message>
    <message>
        <source>noise at rest, RMS</source>
        <translation>Rauschen in Ruhe, RMS</translation>
    </message>
    <message>
        <source>noise at rest, peak to peak</source>
        <translation>Rauschen in Ruhe, Spitze zu Spitze</translation>
    </message>
    <message>
        <source>drift</source>
        <translation>Drift</translation>
    </message>
    <message>
        <source>taps, mean miss</source>
        <translation>Tippen, mittlerer Fehler</translation>
    </message>
    <message>
        <source>taps, worst miss</source>
        <translation>Tippen, größter Fehler</translation>
    </message>
    <message>
        <source>taps, spread</source>
        <translation>Tippen, Streuung</translation>
    </message>
    <message>
        <source>farthest edge</source>
        <translation>fernster Rand</translation>
    </message>
    <message>
        <source>machines, operated by finger or glove</source>
        <translation>Maschinen, mit Finger oder Handschuh bedient</translation>
    </message>
    <message>
        <source>large buttons, anybody&apos;s finger</source>
        <translation>große Tasten, jedermanns Finger</translation>
    </message>
    <message>
        <source>writing and drawing with a pen</source>
        <translation>Schreiben und Zeichnen mit einem Stift</translation>
    </message>
    <message>
        <source>Errors of %1 × %2 %3, up to %4 %3</source>
        <translation>Fehler auf %1 × %2 %3, bis zu %4 %3</translation>
    </message>
    <message>
        <source>From %1 to %2 mm there is no sample, though reports kept coming: the hand was too fast, or touches jump there.</source>
        <translation>Von %1 bis %2 mm fehlen Messpunkte, obwohl Meldungen kamen: Die Hand war zu schnell, oder Berührungen springen dort.</translation>
    </message>
    <message>
        <source>From %1 to %2 mm there is no sample: the finger was up, or the panel is dead there.</source>
        <translation>Von %1 bis %2 mm fehlen Messpunkte: Der Finger war oben, oder das Panel ist dort tot.</translation>
    </message>
    <message>
        <source>samples</source>
        <translation>Messpunkte</translation>
    </message>
    <message>
        <source>covered</source>
        <translation>abgedeckt</translation>
    </message>
    <message>
        <source>ends reached</source>
        <translation>erreichte Enden</translation>
    </message>
    <message>
        <source>A stroke went far off. Say whether the panel did that or your hand.</source>
        <translation>Ein Strich ging weit daneben. Sagen Sie, ob es das Panel war oder Ihre Hand.</translation>
    </message>
    <message>
        <source>A stroke went far off, and the panel did that.</source>
        <translation>Ein Strich ging weit daneben, und das war das Panel.</translation>
    </message>
    <message>
        <source>Drawn again %1 times because of the hand.</source>
        <translation>Wegen der Hand %1-mal neu gezeichnet.</translation>
    </message>
    <message>
        <source>lines</source>
        <translation>Linien</translation>
    </message>
    <message>
        <source>scale in x, at the edge</source>
        <translation>Maßstab in X, am Rand</translation>
    </message>
    <message>
        <source>scale in y, at the edge</source>
        <translation>Maßstab in Y, am Rand</translation>
    </message>
    <message>
        <source>dead strip, width</source>
        <translation>toter Streifen, Breite</translation>
    </message>
    <message>
        <source>seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>taps</source>
        <translation>Tippen</translation>
    </message>
    <message>
        <source>missed taps</source>
        <translation>verlorenes Tippen</translation>
    </message>
    <message>
        <source>double taps</source>
        <translation>doppeltes Tippen</translation>
    </message>
    <message>
        <source>On average %1 mm to the right and %2 mm down.</source>
        <translation>Im Mittel %1 mm nach rechts und %2 mm nach unten.</translation>
    </message>
    <message>
        <source>cells touched</source>
        <translation>berührte Zellen</translation>
    </message>
    <message>
        <source>Dead: %1 × %2 mm, %3 mm from the left and %4 mm from the top; the finger went over it %5 times.</source>
        <translation>Tot: %1 × %2 mm, %3 mm von links und %4 mm von oben; der Finger ging %5-mal darüber.</translation>
    </message>
    <message>
        <source>Not touched: %1 × %2 mm, %3 mm from the left and %4 mm from the top. Rub there again.</source>
        <translation>Nicht berührt: %1 × %2 mm, %3 mm von links und %4 mm von oben. Reiben Sie dort erneut.</translation>
    </message>
    <message>
        <source>places</source>
        <translation>Stellen</translation>
    </message>
    <message>
        <source>Panel</source>
        <translation>Panel</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>Controller</source>
        <translation>Controller</translation>
    </message>
    <message>
        <source>Firmware</source>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>Unit type</source>
        <translation>Gerätetyp</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Operator</source>
        <translation>Prüfer</translation>
    </message>
    <message>
        <source>raw counts of the controller</source>
        <translation>Rohwerte des Controllers</translation>
    </message>
    <message>
        <source>pointer events</source>
        <translation>Zeigerereignisse</translation>
    </message>
    <message>
        <source>raw counts and pointer events</source>
        <translation>Rohwerte und Zeigerereignisse</translation>
    </message>
    <message>
        <source>%1 with their times</source>
        <translation>%1 mit ihren Zeiten</translation>
    </message>
    <message>
        <source>%1, not all with their times</source>
        <translation>%1, nicht alle mit ihren Zeiten</translation>
    </message>
    <message>
        <source>%1 nominal</source>
        <translation>%1 nominell</translation>
    </message>
    <message>
        <source>from the screen</source>
        <translation>vom Bildschirm</translation>
    </message>
    <message>
        <source>as entered</source>
        <translation>wie eingegeben</translation>
    </message>
    <message>
        <source>nominal: 96 pixels an inch</source>
        <translation>nominell: 96 Pixel je Zoll</translation>
    </message>
    <message>
        <source>Active area</source>
        <translation>Aktive Fläche</translation>
    </message>
    <message>
        <source>Samples</source>
        <translation>Messpunkte</translation>
    </message>
    <message>
        <source>strokes drawn again because of the hand</source>
        <translation>Striche, die wegen der Hand wiederholt wurden</translation>
    </message>
    <message>
        <source>part of the line that is covered</source>
        <translation>abgedeckter Teil der Linie</translation>
    </message>
    <message>
        <source>longest piece without a sample</source>
        <translation>längstes Stück ohne Messpunkt</translation>
    </message>
    <message>
        <source>gap</source>
        <translation>Lücke</translation>
    </message>
    <message>
        <source>of the best straight line from the guide, at its middle</source>
        <translation>Abstand der Ausgleichsgeraden von der Führungslinie, in deren Mitte</translation>
    </message>
    <message>
        <source>drift of the best straight line from end to end</source>
        <translation>wie weit die Ausgleichsgerade von Ende zu Ende abweicht</translation>
    </message>
    <message>
        <source>tilt</source>
        <translation>Neigung</translation>
    </message>
    <message>
        <source>greatest distance from the best straight line</source>
        <translation>größter Abstand von der Ausgleichsgeraden</translation>
    </message>
    <message>
        <source>straight</source>
        <translation>gerade</translation>
    </message>
    <message>
        <source>distance from the best straight line, RMS</source>
        <translation>Abstand von der Ausgleichsgeraden, Effektivwert</translation>
    </message>
    <message>
        <source>RMS</source>
        <translation>RMS</translation>
    </message>
    <message>
        <source>distance from the best straight line, 95th percentile</source>
        <translation>Abstand von der Ausgleichsgeraden, 95. Perzentil</translation>
    </message>
    <message>
        <source>p95</source>
        <translation>p95</translation>
    </message>
    <message>
        <source>greatest distance of a sample from the guide</source>
        <translation>größter Abstand eines Messpunkts von der Führungslinie</translation>
    </message>
    <message>
        <source>distance of the samples from the guide, RMS</source>
        <translation>Abstand der Messpunkte von der Führungslinie, Effektivwert</translation>
    </message>
    <message>
        <source>distance of the samples from the guide, 95th percentile</source>
        <translation>Abstand der Messpunkte von der Führungslinie, 95. Perzentil</translation>
    </message>
    <message>
        <source>greatest distance of the course from the guide in the centre</source>
        <translation>größter Abstand des Verlaufs von der Führungslinie in der Mitte</translation>
    </message>
    <message>
        <source>centre</source>
        <translation>Mitte</translation>
    </message>
    <message>
        <source>greatest distance of the course from the guide in the edge zone</source>
        <translation>größter Abstand des Verlaufs von der Führungslinie in der Randzone</translation>
    </message>
    <message>
        <source>edge</source>
        <translation>Rand</translation>
    </message>
    <message>
        <source>RMS of the samples around the course</source>
        <translation>Effektivwert der Messpunkte um den Verlauf</translation>
    </message>
    <message>
        <source>scatter</source>
        <translation>Streuung</translation>
    </message>
    <message>
        <source>speed of the hand</source>
        <translation>Geschwindigkeit der Hand</translation>
    </message>
    <message>
        <source>speed</source>
        <translation>Tempo</translation>
    </message>
    <message>
        <source>reports a second</source>
        <translation>Meldungen je Sekunde</translation>
    </message>
    <message>
        <source>time in which reports failed to come</source>
        <translation>Zeit, in der Meldungen ausblieben</translation>
    </message>
    <message>
        <source>a file that can be renamed</source>
        <translation>eine umbenennbare Datei</translation>
    </message>
    <message>
        <source>the line&apos;s name &quot;%1&quot;</source>
        <translation>der Name „%1“ der Linie</translation>
    </message>
    <message>
        <source>the end of the file</source>
        <translation>das Ende der Datei</translation>
    </message>
    <message>
        <source>max %1</source>
        <translation>max. %1</translation>
    </message>
    <message>
        <source>straight %1</source>
        <translation>gerade %1</translation>
    </message>
    <message>
        <source>limit V</source>
        <translation>Grenze V</translation>
    </message>
    <message>
        <source>limit H</source>
        <translation>Grenze H</translation>
    </message>
    <message>
        <source>%1   %2 of %3 lines pass</source>
        <translation>%1   %2 von %3 Linien bestehen</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>deviations drawn %1 times as large</source>
        <translation>Abweichungen %1-fach vergrößert gezeichnet</translation>
    </message>
    <message>
        <source>%1: %2; at least %3</source>
        <translation>%1: %2; mindestens %3</translation>
    </message>
    <message>
        <source>%1: %2; at most %3</source>
        <translation>%1: %2; höchstens %3</translation>
    </message>
    <message>
        <source>Verdict: %1</source>
        <translation>Urteil: %1</translation>
    </message>
    <message>
        <source>Calibration</source>
        <translation>Kalibrierung</translation>
    </message>
    <message>
        <source>Measured on</source>
        <translation>Gemessen an</translation>
    </message>
    <message>
        <source>All lengths are nominal: 96 pixels are taken as an inch.</source>
        <translation>Alle Längen sind nominal: 96 Pixel gelten als ein Zoll.</translation>
    </message>
    <message>
        <source>%1 %2   page %3 of %4</source>
        <translation>%1 %2   Seite %3 von %4</translation>
    </message>
    <message>
        <source>Panel as a whole</source>
        <translation>Panel insgesamt</translation>
    </message>
    <message>
        <source>Resting finger</source>
        <translation>Ruhender Finger</translation>
    </message>
    <message>
        <source>Taps</source>
        <translation>Tippen</translation>
    </message>
    <message>
        <source>Coverage</source>
        <translation>Abdeckung</translation>
    </message>
    <message>
        <source>%1, way back</source>
        <translation>%1, Rückweg</translation>
    </message>
    <message>
        <source>Line %1</source>
        <translation>Linie %1</translation>
    </message>
    <message>
        <source>Resting finger, place %1</source>
        <translation>Ruhender Finger, Stelle %1</translation>
    </message>
    <message>
        <source>Touches now miss by up to %1.</source>
        <translation>Berührungen liegen jetzt bis zu %1 daneben.</translation>
    </message>
    <message>
        <source>A calibration with %1 targets would leave up to %2.</source>
        <translation>Eine Kalibrierung mit %1 Zielen ließe bis zu %2 übrig.</translation>
    </message>
    <message>
        <source>Calibrate with %1 targets.</source>
        <translation>Kalibrieren Sie mit %1 Zielen.</translation>
    </message>
    <message>
        <source>Another calibration would gain nothing.</source>
        <translation>Eine weitere Kalibrierung brächte nichts.</translation>
    </message>
    <message>
        <source>No calibration can bring this panel below %1.</source>
        <translation>Keine Kalibrierung bringt dieses Panel unter %1.</translation>
    </message>
    <message>
        <source>%1 (%2 % sure)</source>
        <translation>%1 (zu %2 % sicher)</translation>
    </message>
    <message>
        <source>The cause is not clear.</source>
        <translation>Die Ursache ist nicht klar.</translation>
    </message>
    <message>
        <source>Measure again, slowly. If it fails again, see the figures.</source>
        <translation>Messen Sie erneut, langsam. Besteht es wieder nicht, sehen Sie die Zahlen an.</translation>
    </message>
    <message>
        <source>rate</source>
        <translation>Rate</translation>
    </message>
    <message>
        <source>lost</source>
        <translation>fehlt</translation>
    </message>
    <message>
        <source>nominal</source>
        <translation>nominell</translation>
    </message>
    <message>
        <source>Arrows from where a touch was to where it was reported, drawn %1 times as long.</source>
        <translation>Pfeile vom Ort der Berührung zum gemeldeten Ort, %1-mal so lang gezeichnet.</translation>
    </message>
    <message>
        <source>The ring marks the worst place. Red is beyond %1 %2, the limit of a line&apos;s offset.</source>
        <translation>Der Ring zeigt die schlechteste Stelle. Rot ist mehr als %1 %2, die Grenze für den Versatz einer Linie.</translation>
    </message>
</context>
<context>
    <name>messages</name>
    <message>
        <source>a line of text</source>
        <translation>eine Textzeile</translation>
    </message>
    <message>
        <source>a read error</source>
        <translation>ein Lesefehler</translation>
    </message>
    <message>
        <source>100 lines, one for each message</source>
        <translation>100 Zeilen, eine für jede Meldung</translation>
    </message>
    <message>
        <source>%1 lines</source>
        <translation>%1 Zeilen</translation>
    </message>
    <message>
        <source>at most %1 bytes</source>
        <translation>höchstens %1 Bytes</translation>
    </message>
    <message>
        <source>more</source>
        <translation>mehr</translation>
    </message>
    <message>
        <source>a working folder that can be read</source>
        <translation>ein lesbarer Arbeitsordner</translation>
    </message>
    <message>
        <source>a file that can be read</source>
        <translation>eine lesbare Datei</translation>
    </message>
    <message>
        <source>none that can be opened</source>
        <translation>keine, die sich öffnen lässt</translation>
    </message>
    <message>
        <source>at most %1 bytes in all lines</source>
        <translation>höchstens %1 Bytes in allen Zeilen</translation>
    </message>
</context>
<context>
    <name>numbers</name>
    <message>
        <source>a palette index from 0 to 15</source>
        <translation>ein Palettenindex von 0 bis 15</translation>
    </message>
    <message>
        <source>a draw width of 1 or 2</source>
        <translation>eine Strichbreite von 1 oder 2</translation>
    </message>
    <message>
        <source>a count of samples from 1 to 3001</source>
        <translation>eine Anzahl Messpunkte von 1 bis 3001</translation>
    </message>
    <message>
        <source>the x of a sample</source>
        <translation>das x eines Messpunkts</translation>
    </message>
    <message>
        <source>the y of a sample</source>
        <translation>das y eines Messpunkts</translation>
    </message>
    <message>
        <source>the screen&apos;s width in twips</source>
        <translation>die Breite des Bildschirms in Twips</translation>
    </message>
    <message>
        <source>the screen&apos;s height in twips</source>
        <translation>die Höhe des Bildschirms in Twips</translation>
    </message>
    <message>
        <source>the panel&apos;s width in mm</source>
        <translation>die Breite des Panels in mm</translation>
    </message>
    <message>
        <source>the panel&apos;s height in mm</source>
        <translation>die Höhe des Panels in mm</translation>
    </message>
    <message>
        <source>the guide&apos;s position</source>
        <translation>die Lage der Hilfslinie</translation>
    </message>
    <message>
        <source>the deviation of a sample</source>
        <translation>die Abweichung eines Messpunkts</translation>
    </message>
    <message>
        <source>the average</source>
        <translation>der Mittelwert</translation>
    </message>
    <message>
        <source>the maximum</source>
        <translation>das Maximum</translation>
    </message>
    <message>
        <source>the minimum</source>
        <translation>das Minimum</translation>
    </message>
    <message>
        <source>the RMS</source>
        <translation>der Effektivwert</translation>
    </message>
    <message>
        <source>the end of the file</source>
        <translation>das Ende der Datei</translation>
    </message>
</context>
<context>
    <name>parameters</name>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Nothing was written.</source>
        <translation>Es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <source>The controller holds these words already. Nothing was written.</source>
        <translation>Der Controller enthält diese Wörter bereits. Es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <source>Put the old words back?</source>
        <translation>Sollen die alten Wörter zurückgeschrieben werden?</translation>
    </message>
    <message>
        <source>The old words are back.</source>
        <translation>Die alten Wörter sind zurückgeschrieben.</translation>
    </message>
    <message>
        <source>The old words are not all back.</source>
        <translation>Nicht alle alten Wörter sind zurückgeschrieben.</translation>
    </message>
    <message>
        <source>Written: %1</source>
        <translation>Geschrieben: %1</translation>
    </message>
    <message>
        <source>The journal is not complete: %1</source>
        <translation>Das Journal ist nicht vollständig: %1</translation>
    </message>
    <message>
        <source>The parameter block cannot be kept. %1. Go on without a way back?</source>
        <translation>Der Parameterblock kann nicht gesichert werden. %1. Ohne Rückweg fortfahren?</translation>
    </message>
    <message>
        <source>The parameters cannot be read.</source>
        <translation>Die Parameter können nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The parameters are read.</source>
        <translation>Die Parameter sind gelesen.</translation>
    </message>
    <message>
        <source>No change: the controller already has these values.</source>
        <translation>Der Controller enthält diese Parameter bereits.</translation>
    </message>
    <message>
        <source>Nothing was written: the controller cannot be read.</source>
        <translation>Es wurde nichts geschrieben: Der Controller kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The write broke off.</source>
        <translation>Das Schreiben brach ab.</translation>
    </message>
    <message>
        <source>Nothing to write: no value has been changed.</source>
        <translation>Kein Wort ist geändert.</translation>
    </message>
    <message>
        <source>The parameters are written; Undo takes them back.</source>
        <translation>Die Parameter sind geschrieben; „Rückgängig“ nimmt sie zurück.</translation>
    </message>
    <message>
        <source>The parameters are as they were before.</source>
        <translation>Die Parameter sind wie zuvor.</translation>
    </message>
    <message>
        <source>Loaded %1; Write sends it to the controller.</source>
        <translation>%1 ist geladen; „Schreiben“ sendet die Werte an den Controller.</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>Gespeichert: %1</translation>
    </message>
    <message>
        <source>The table and %1 are the same.</source>
        <translation>Die Tabelle und %1 sind gleich.</translation>
    </message>
    <message>
        <source>Word %1: here %2, in the file %3</source>
        <translation>Wort %1: hier %2, in der Datei %3</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>Compare</source>
        <translation>Vergleich</translation>
    </message>
    <message>
        <source>%1 of 8 words differ from %2.</source>
        <translation>%1 von 8 Wörtern weichen von %2 ab.</translation>
    </message>
    <message>
        <source>Defaults restored; press Read to see them.</source>
        <translation>Die Werkseinstellungen sind wiederhergestellt; „Lesen“ zeigt sie.</translation>
    </message>
    <message>
        <source>The controller did not say that its defaults are restored.</source>
        <translation>Der Controller hat die Wiederherstellung der Werkseinstellungen nicht bestätigt.</translation>
    </message>
    <message>
        <source>Undo puts back the parameters from before.</source>
        <translation>„Rückgängig“ holt die vorigen Parameter zurück.</translation>
    </message>
    <message>
        <source>There is no backup: %1.</source>
        <translation>Es gibt keine Sicherung: %1.</translation>
    </message>
    <message>
        <source>The controller is reset.</source>
        <translation>Der Controller ist neu gestartet.</translation>
    </message>
    <message>
        <source>The controller did not acknowledge the reset.</source>
        <translation>Der Controller hat den Neustart nicht bestätigt.</translation>
    </message>
    <message>
        <source>high byte</source>
        <translation>High-Byte</translation>
    </message>
    <message>
        <source>low byte</source>
        <translation>Low-Byte</translation>
    </message>
    <message>
        <source>Word %1, %2</source>
        <translation>Wort %1, %2</translation>
    </message>
    <message>
        <source>%1: expected %2, found %3</source>
        <translation>%1: erwartet: %2, gefunden: %3</translation>
    </message>
    <message>
        <source>two hexadecimal digits, 00 to FF</source>
        <translation>zwei Hexadezimalziffern, 00 bis FF</translation>
    </message>
    <message>
        <source>a number from 0 to 255</source>
        <translation>eine Zahl von 0 bis 255</translation>
    </message>
    <message>
        <source>%1: value missing</source>
        <translation>%1: Der Wert fehlt</translation>
    </message>
    <message>
        <source>Word %1: the controller does not answer</source>
        <translation>Wort %1: Der Controller antwortet nicht</translation>
    </message>
    <message>
        <source>Word %1: the controller&apos;s answer holds no parameter word</source>
        <translation>Wort %1: Die Antwort des Controllers enthält kein Parameterwort</translation>
    </message>
    <message>
        <source>Word %1: the controller did not acknowledge %2; if its parameters are locked, Reset opens the lock</source>
        <translation>Wort %1: Der Controller hat %2 nicht bestätigt; sind seine Parameter gesperrt, so hebt „Neustart“ die Sperre auf</translation>
    </message>
    <message>
        <source>Word %1: %2 was written, %3 was read back</source>
        <translation>Wort %1: %2 wurde geschrieben, %3 wurde zurückgelesen</translation>
    </message>
    <message>
        <source>four hexadecimal digits</source>
        <translation>vier Hexadezimalziffern</translation>
    </message>
    <message>
        <source>eight lines of four hexadecimal digits</source>
        <translation>acht Zeilen mit je vier Hexadezimalziffern</translation>
    </message>
    <message>
        <source>1 line</source>
        <translation>1 Zeile</translation>
    </message>
    <message>
        <source>%1 lines</source>
        <translation>%1 Zeilen</translation>
    </message>
    <message>
        <source>the end of the file after eight lines</source>
        <translation>das Ende der Datei nach acht Zeilen</translation>
    </message>
    <message>
        <source>a name and 8 or 16 words, one a line</source>
        <translation>einen Namen und 8 oder 16 Wörter, eines je Zeile</translation>
    </message>
    <message>
        <source>The calibration from before is not kept: this controller does not let its parameters be read. %1.</source>
        <translation>Die vorige Kalibrierung ist nicht gesichert: Die Parameter dieses Controllers lassen sich nicht lesen. %1.</translation>
    </message>
    <message>
        <source>The calibration from before is in force.</source>
        <translation>Die vorige Kalibrierung gilt.</translation>
    </message>
    <message>
        <source>The new calibration is in force.</source>
        <translation>Die neue Kalibrierung gilt.</translation>
    </message>
    <message>
        <source>The controller holds words of both calibrations.</source>
        <translation>Der Controller enthält Wörter beider Kalibrierungen.</translation>
    </message>
    <message>
        <source>Which calibration is in force cannot be read.</source>
        <translation>Welche Kalibrierung gilt, lässt sich nicht lesen.</translation>
    </message>
    <message>
        <source>No calibration from before is kept. To be able to go back, switch on &quot;Check after calibrating&quot; before you calibrate.</source>
        <translation>Keine vorige Kalibrierung ist gesichert. Um zurückzukönnen, schalten Sie „Nach dem Kalibrieren prüfen“ ein, bevor Sie kalibrieren.</translation>
    </message>
    <message>
        <source>The last check of the calibration broke off.</source>
        <translation>Die letzte Prüfung der Kalibrierung brach ab.</translation>
    </message>
    <message>
        <source>Put back the calibration from before?</source>
        <translation>Die vorige Kalibrierung zurückholen?</translation>
    </message>
    <message>
        <source>Put back</source>
        <translation>Zurückholen</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Behalten</translation>
    </message>
    <message>
        <source>The new calibration is kept.</source>
        <translation>Die neue Kalibrierung bleibt.</translation>
    </message>
</context>
<context>
    <name>pins</name>
    <message>
        <source>Read again? Your changes to the pins are lost.</source>
        <translation>Neu lesen? Ihre Änderungen an der Belegung gehen verloren.</translation>
    </message>
    <message>
        <source>Nothing was read; your changes are kept.</source>
        <translation>Es wurde nichts gelesen; Ihre Änderungen bleiben.</translation>
    </message>
    <message>
        <source>The pin definition is read.</source>
        <translation>Die Anschlussbelegung ist gelesen.</translation>
    </message>
    <message>
        <source>The controller holds no pin definition; what you write is its first.</source>
        <translation>Der Controller hat keine Pinbelegung; was Sie schreiben, ist seine erste.</translation>
    </message>
    <message>
        <source>Nothing was written: these are not the pins of %1. Read them first.</source>
        <translation>Es wurde nichts geschrieben: Dies ist nicht die Belegung von %1. Lesen Sie sie zuerst.</translation>
    </message>
    <message>
        <source>The pin definition is written.</source>
        <translation>Die Anschlussbelegung ist geschrieben.</translation>
    </message>
    <message>
        <source>Nothing was written.</source>
        <translation>Es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <source>Nothing was written: %1</source>
        <translation>Es wurde nichts geschrieben: %1</translation>
    </message>
    <message>
        <source>The write broke off.</source>
        <translation>Das Schreiben brach ab.</translation>
    </message>
    <message>
        <source>channel</source>
        <translation>Kanal</translation>
    </message>
    <message>
        <source>bit</source>
        <translation>Bit</translation>
    </message>
    <message>
        <source>%1: expected 0 to 7, found %2</source>
        <translation>%1: erwartet: 0 bis 7, gefunden: %2</translation>
    </message>
    <message>
        <source>%1: %2 is used by %3 too</source>
        <translation>%1: %2 wird auch von %3 verwendet</translation>
    </message>
    <message>
        <source>The old pin definition is not wholly back.</source>
        <translation>Die alte Anschlussbelegung ist nicht vollständig zurückgeschrieben.</translation>
    </message>
    <message>
        <source>expected %1 wires, found %2</source>
        <translation>erwartet: %1 Leitungen, gefunden: %2</translation>
    </message>
    <message>
        <source>The old pin definition cannot be noted. %1. Go on without a way back?</source>
        <translation>Die alte Pinbelegung kann nicht notiert werden. %1. Ohne Weg zurück fortfahren?</translation>
    </message>
</context>
<context>
    <name>ports</name>
    <message>
        <source>this program</source>
        <translation>dieses Programm</translation>
    </message>
    <message>
        <source>%1 (process %2)</source>
        <translation>%1 (Prozess %2)</translation>
    </message>
    <message>
        <source>%1 (process %2, by its lock file %3)</source>
        <translation>%1 (Prozess %2, laut seiner Sperrdatei %3)</translation>
    </message>
    <message>
        <source>a program that is just locking it with %1</source>
        <translation>ein Programm, das ihn gerade mit %1 sperrt</translation>
    </message>
    <message>
        <source>it is in use by %1. Close that program and try again.</source>
        <translation>Er ist in Gebrauch durch %1. Schließen Sie dieses Programm, und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>this program has it open already, as the touch driver does until it lets go. Close what uses it and try again.</source>
        <translation>Dieses Programm hat ihn schon offen, wie der Touch-Treiber, bis er ihn freigibt. Schließen Sie, was ihn verwendet, und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>another program is using it. Close that program and try again.</source>
        <translation>Ein anderes Programm verwendet ihn. Schließen Sie dieses Programm, und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Which one it is, only an administrator can see.</source>
        <translation>Welches das ist, kann nur ein Administrator sehen.</translation>
    </message>
    <message>
        <source>%1 has it open too and takes replies.</source>
        <translation>%1 hat ihn auch offen und nimmt Antworten entgegen.</translation>
    </message>
    <message>
        <source>%1 have it open too and take replies.</source>
        <translation>%1 haben ihn auch offen und nehmen Antworten entgegen.</translation>
    </message>
    <message>
        <source>Ask an administrator: it is not the device&apos;s permissions that forbid it.</source>
        <translation>Fragen Sie einen Administrator: Es sind nicht die Rechte des Geräts, die es verbieten.</translation>
    </message>
    <message>
        <source>Ask an administrator: no group of users may open it.</source>
        <translation>Fragen Sie einen Administrator: Keine Benutzergruppe darf den Port öffnen.</translation>
    </message>
    <message>
        <source>You are in the group %1 already: log out and in again.</source>
        <translation>Sie sind schon in der Gruppe %1: Melden Sie sich ab und wieder an.</translation>
    </message>
    <message>
        <source>Add yourself to the group %1 and log in again.</source>
        <translation>Fügen Sie sich zur Gruppe %1 hinzu, und melden Sie sich neu an.</translation>
    </message>
    <message>
        <source>there is no such device. Connect it, or say which device it is with %1. &apos;touchctl doctor&apos; lists those that are there.</source>
        <translation>Dieses Gerät gibt es nicht. Schließen Sie es an, oder nennen Sie das Gerät mit %1. „touchctl doctor“ führt die vorhandenen auf.</translation>
    </message>
    <message>
        <source>there is no hardware behind it. Connect it, or say which device it is with %1.</source>
        <translation>Dahinter ist keine Hardware. Schließen Sie sie an, oder nennen Sie das Gerät mit %1.</translation>
    </message>
    <message>
        <source>permission denied.</source>
        <translation>Zugriff verweigert.</translation>
    </message>
    <message>
        <source>it is not a serial port. Please say which device it is with %1.</source>
        <translation>Das ist kein serieller Port. Nennen Sie das Gerät mit %1.</translation>
    </message>
    <message>
        <source>Check the connection, then try again.</source>
        <translation>Prüfen Sie die Verbindung und versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>the simulated controller has no serial port while its driver holds it. Choose that controller first. If it is chosen, the system has no pseudo-terminal left: mount devpts on /dev/pts.</source>
        <translation>Der simulierte Controller hat keinen seriellen Port, solange sein Treiber ihn hält. Wählen Sie zuerst diesen Controller. Ist er gewählt, hat das System kein Pseudoterminal mehr frei: binden Sie devpts unter /dev/pts ein.</translation>
    </message>
    <message>
        <source>%1 cannot be opened: %2</source>
        <translation>%1 kann nicht geöffnet werden: %2</translation>
    </message>
    <message>
        <source>%1 is gone: it was unplugged or switched off (%2). Connect it again.</source>
        <translation>%1 ist nicht mehr da: abgezogen oder ausgeschaltet (%2). Schließen Sie das Gerät wieder an.</translation>
    </message>
    <message>
        <source>%1 cannot be set to %2: %3.</source>
        <translation>%1 kann nicht auf %2 gestellt werden: %3.</translation>
    </message>
    <message>
        <source>The line settings &quot;%1&quot; are wrong: expected %2, found &quot;%3&quot;</source>
        <translation>Die Leitungseinstellungen „%1“ sind falsch: erwartet: %2, gefunden: „%3“</translation>
    </message>
    <message>
        <source>baud rate, parity, data bits and stop bits, e.g. 9600,n,8,1</source>
        <translation>Baudrate, Parität, Datenbits und Stoppbits, z. B. 9600,n,8,1</translation>
    </message>
    <message>
        <source>a baud rate of 1 to 4000000</source>
        <translation>eine Baudrate von 1 bis 4000000</translation>
    </message>
    <message>
        <source>n, e or o as the parity</source>
        <translation>n, e oder o als Parität</translation>
    </message>
    <message>
        <source>5 to 8 data bits</source>
        <translation>5 bis 8 Datenbits</translation>
    </message>
    <message>
        <source>1 or 2 stop bits</source>
        <translation>1 oder 2 Stoppbits</translation>
    </message>
    <message>
        <source>there is no such device</source>
        <translation>es gibt kein solches Gerät</translation>
    </message>
    <message>
        <source>you may not open it</source>
        <translation>Sie dürfen ihn nicht öffnen</translation>
    </message>
    <message>
        <source>in use by %1</source>
        <translation>in Gebrauch durch %1</translation>
    </message>
    <message>
        <source>free</source>
        <translation>frei</translation>
    </message>
    <message>
        <source>free, unless a program has it that you may not see</source>
        <translation>frei, falls ihn kein Programm hat, das Sie nicht sehen dürfen</translation>
    </message>
    <message>
        <source>the simulated controller has no serial port while its driver holds it. Choose that controller first.</source>
        <translation>Der simulierte Controller hat keinen seriellen Port, solange sein Treiber ihn hat. Wählen Sie erst diesen Controller.</translation>
    </message>
</context>
<context>
    <name>rawdrawing</name>
    <message>
        <source>F1 for Hot Key Help</source>
        <translation>F1 zeigt die Tasten</translation>
    </message>
    <message>
        <source>Byte %1 of %2: touched or lifted.</source>
        <translation>Byte %1 von %2: berührt oder abgehoben.</translation>
    </message>
    <message>
        <source>Byte %1 of %2: X, low bits.</source>
        <translation>Byte %1 von %2: X, niedrige Bits.</translation>
    </message>
    <message>
        <source>Byte %1 of %2: X, high bits.</source>
        <translation>Byte %1 von %2: X, hohe Bits.</translation>
    </message>
    <message>
        <source>Byte %1 of %2: Y, low bits.</source>
        <translation>Byte %1 von %2: Y, niedrige Bits.</translation>
    </message>
    <message>
        <source>Byte %1 of %2: Y, high bits.</source>
        <translation>Byte %1 von %2: Y, hohe Bits.</translation>
    </message>
    <message>
        <source>Byte %1 of %2.</source>
        <translation>Byte %1 von %2.</translation>
    </message>
    <message>
        <source>Touched, X %1, Y %2.</source>
        <translation>Berührt, X %1, Y %2.</translation>
    </message>
    <message>
        <source>Lifted, X %1, Y %2.</source>
        <translation>Abgehoben, X %1, Y %2.</translation>
    </message>
</context>
<context>
    <name>receiving</name>
    <message>
        <source>Intervals : shortest %1, median %2, longest %3 ms</source>
        <translation>Abstände: kürzester %1, Median %2, längster %3 ms</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>%1 ms at %2 ms</source>
        <translation>%1 ms bei %2 ms</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>Gaps : %1</source>
        <translation>Lücken: %1</translation>
    </message>
    <message>
        <source>Line limit: %1 reports per second</source>
        <translation>Grenze der Leitung: %1 Meldungen je Sekunde</translation>
    </message>
    <message>
        <source>While touched : %1 reports per second</source>
        <translation>Während der Berührung : %1 Meldungen je Sekunde</translation>
    </message>
    <message>
        <source>The last million lines are kept, and &quot;Save&quot; writes them.</source>
        <translation>Die letzte Million Zeilen bleibt erhalten; „Speichern …“ schreibt sie.</translation>
    </message>
</context>
<context>
    <name>recording</name>
    <message>
        <source>bytes of two hexadecimal digits with a blank between</source>
        <translation>Bytes aus zwei Hexadezimalziffern, durch ein Leerzeichen getrennt</translation>
    </message>
    <message>
        <source>a time in seconds with six decimals, such as 0.104250</source>
        <translation>eine Zeit in Sekunden mit sechs Nachkommastellen, etwa 0.104250</translation>
    </message>
    <message>
        <source>a time not before the one above</source>
        <translation>eine Zeit, die nicht vor der darüber liegt</translation>
    </message>
    <message>
        <source>&gt; for bytes to the controller or &lt; for bytes from it</source>
        <translation>&gt; für Bytes an den Controller oder &lt; für Bytes von ihm</translation>
    </message>
    <message>
        <source>the end of the file</source>
        <translation>das Ende der Datei</translation>
    </message>
    <message>
        <source>at most %1 bytes</source>
        <translation>höchstens %1 Bytes</translation>
    </message>
    <message>
        <source>more</source>
        <translation>mehr</translation>
    </message>
    <message>
        <source>a file that can be written</source>
        <translation>eine beschreibbare Datei</translation>
    </message>
    <message>
        <source>a recording that can be read again</source>
        <translation>eine Aufzeichnung, die wieder gelesen werden kann</translation>
    </message>
    <message>
        <source>a longer one</source>
        <translation>eine längere</translation>
    </message>
    <message>
        <source>room for the recording</source>
        <translation>Platz für die Aufzeichnung</translation>
    </message>
    <message>
        <source>a full or missing disk</source>
        <translation>ein voller oder fehlender Datenträger</translation>
    </message>
    <message>
        <source>commands that were sent</source>
        <translation>gesendete Befehle</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
</context>
<context>
    <name>reports</name>
    <message>
        <source>status bytes of two hexadecimal digits, such as D8,D9</source>
        <translation>Statusbytes aus zwei Hexadezimalziffern, etwa D8,D9</translation>
    </message>
    <message>
        <source>a layout such as low7@1,3 with low7, high7 or le16</source>
        <translation>ein Aufbau wie low7@1,3 mit low7, high7 oder le16</translation>
    </message>
    <message>
        <source>two different places from 1 to %1 for coordinates of two bytes</source>
        <translation>zwei verschiedene Stellen von 1 bis %1 für Koordinaten aus zwei Bytes</translation>
    </message>
    <message>
        <source>status bytes from 80 to FF with coordinates of 7 bits</source>
        <translation>Statusbytes von 80 bis FF bei Koordinaten aus 7 Bits</translation>
    </message>
    <message>
        <source>status bytes that no other format has</source>
        <translation>Statusbytes, die kein anderes Format hat</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>status bytes that are either touching or released</source>
        <translation>Statusbytes, die entweder „berührt“ oder „losgelassen“ bedeuten</translation>
    </message>
    <message>
        <source>%1 in both</source>
        <translation>%1 in beiden</translation>
    </message>
    <message>
        <source>five fields: name, length, touching, released, layout</source>
        <translation>fünf Felder: Name, Länge, berührt, losgelassen, Aufbau</translation>
    </message>
    <message>
        <source>a name of its own</source>
        <translation>ein eigener Name</translation>
    </message>
    <message>
        <source>another %1</source>
        <translation>noch einmal %1</translation>
    </message>
    <message>
        <source>a packet length from 5 to 64</source>
        <translation>eine Paketlänge von 5 bis 64</translation>
    </message>
    <message>
        <source>%1 problems in all; these are the first %2.</source>
        <translation>%1 Fehler insgesamt; dies sind die ersten %2.</translation>
    </message>
</context>
<context>
    <name>scripts</name>
    <message>
        <source>text in quotes with \r, \n, \t, \\, \&quot; or \xNN</source>
        <translation>Text in Anführungszeichen mit \r, \n, \t, \\, \&quot; oder \xNN</translation>
    </message>
    <message>
        <source>two hexadecimal digits, text in quotes, ?? or *</source>
        <translation>zwei Hexadezimalziffern, Text in Anführungszeichen, ?? oder *</translation>
    </message>
    <message>
        <source>two hexadecimal digits or text in quotes</source>
        <translation>zwei Hexadezimalziffern oder Text in Anführungszeichen</translation>
    </message>
    <message>
        <source>at most 4096 bytes</source>
        <translation>höchstens 4096 Bytes</translation>
    </message>
    <message>
        <source>at least one byte</source>
        <translation>mindestens ein Byte</translation>
    </message>
    <message>
        <source>a time up to a day, such as 200 ms or 5 s</source>
        <translation>eine Zeit bis zu einem Tag, etwa 200 ms oder 5 s</translation>
    </message>
    <message>
        <source>a command without blanks, such as UT</source>
        <translation>ein Befehl ohne Leerzeichen, etwa UT</translation>
    </message>
    <message>
        <source>expect nothing for 300 ms</source>
        <translation>expect nothing for 300 ms</translation>
    </message>
    <message>
        <source>line settings such as 9600,n,8,1</source>
        <translation>Leitungseinstellungen wie 9600,n,8,1</translation>
    </message>
    <message>
        <source>on BYTES send BYTES</source>
        <translation>on BYTES send BYTES</translation>
    </message>
    <message>
        <source>a number of times from 1 to 1000000</source>
        <translation>eine Anzahl von 1 bis 1000000</translation>
    </message>
    <message>
        <source>repeat 10, or repeat NN 00 to 3F</source>
        <translation>repeat 10 oder repeat NN 00 to 3F</translation>
    </message>
    <message>
        <source>its &quot;%1&quot;</source>
        <translation>das zugehörige „%1“</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keines</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>line %1: expected %2, %3</source>
        <translation>Zeile %1: erwartet %2, %3</translation>
    </message>
    <message>
        <source>stopped</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>the port is closed</source>
        <translation>der Anschluss ist geschlossen</translation>
    </message>
    <message>
        <source>%1 within %2</source>
        <translation>%1 innerhalb von %2</translation>
    </message>
    <message>
        <source>a touch report within %1</source>
        <translation>eine Berührungsmeldung innerhalb von %1</translation>
    </message>
    <message>
        <source>nothing for %1</source>
        <translation>%1 lang nichts</translation>
    </message>
    <message>
        <source>the bytes did not go out</source>
        <translation>die Bytes wurden nicht gesendet</translation>
    </message>
    <message>
        <source>received nothing</source>
        <translation>nichts empfangen</translation>
    </message>
    <message>
        <source>received %1</source>
        <translation>empfangen %1</translation>
    </message>
    <message>
        <source>The script was not run.</source>
        <translation>Das Skript wurde nicht ausgeführt.</translation>
    </message>
    <message>
        <source>Script %1</source>
        <translation>Skript %1</translation>
    </message>
    <message>
        <source>%1: passed; %2 bytes sent, %3 received</source>
        <translation>%1: bestanden; %2 Bytes gesendet, %3 empfangen</translation>
    </message>
    <message>
        <source>Line %1 of %2, &quot;%3&quot;, changes what the controller has stored. Run the script?</source>
        <translation>Zeile %1 von %2, „%3“, ändert, was der Controller gespeichert hat. Das Skript ausführen?</translation>
    </message>
    <message>
        <source>text with \r, \n, \t, \\, \&quot; or \xNN</source>
        <translation>Text mit \r, \n, \t, \\, \&quot; oder \xNN</translation>
    </message>
</context>
<context>
    <name>settings</name>
    <message>
        <source>Press Space to enable it again.</source>
        <translation>Die Leertaste schaltet es wieder ein.</translation>
    </message>
    <message>
        <source>Timing: the controller cannot be opened</source>
        <translation>Zeiten: Der Controller kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Timing: the driver did not take it</source>
        <translation>Zeiten: Der Treiber hat sie nicht angenommen</translation>
    </message>
    <message>
        <source>Double click and right click timing: set</source>
        <translation>Zeiten für Doppelklick und Rechtsklick: gesetzt</translation>
    </message>
    <message>
        <source>on</source>
        <translation>ein</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>desktop</source>
        <translation>Desktop</translation>
    </message>
    <message>
        <source>Desk Top</source>
        <translation>Desktop</translation>
    </message>
    <message>
        <source>drawing</source>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>Drawing</source>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>button</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>Button</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>low</source>
        <translation>gering</translation>
    </message>
    <message>
        <source>Low sensitive</source>
        <translation>Wenig empfindlich</translation>
    </message>
    <message>
        <source>normal</source>
        <translation>normal</translation>
    </message>
    <message>
        <source>Normal touch (default)</source>
        <translation>Normal (Voreinstellung)</translation>
    </message>
    <message>
        <source>more</source>
        <translation>erhöht</translation>
    </message>
    <message>
        <source>More sensitive</source>
        <translation>Empfindlicher</translation>
    </message>
    <message>
        <source>very</source>
        <translation>hoch</translation>
    </message>
    <message>
        <source>Very sensitive</source>
        <translation>Sehr empfindlich</translation>
    </message>
    <message>
        <source>most</source>
        <translation>höchste</translation>
    </message>
    <message>
        <source>Most sensitive</source>
        <translation>Am empfindlichsten</translation>
    </message>
    <message>
        <source>Enable Up Touch Sound</source>
        <translation>Ton beim Loslassen</translation>
    </message>
    <message>
        <source>Up touch sound</source>
        <translation>Ton beim Loslassen</translation>
    </message>
    <message>
        <source>Enable Down Touch Sound</source>
        <translation>Ton beim Berühren</translation>
    </message>
    <message>
        <source>Down touch sound</source>
        <translation>Ton beim Berühren</translation>
    </message>
    <message>
        <source>Enable Double  Click</source>
        <translation>Doppelklick ermöglichen</translation>
    </message>
    <message>
        <source>Double click</source>
        <translation>Doppelklick</translation>
    </message>
    <message>
        <source>Enable Right Mouse Button</source>
        <translation>Rechte Maustaste ermöglichen</translation>
    </message>
    <message>
        <source>Right button</source>
        <translation>Rechte Maustaste</translation>
    </message>
    <message>
        <source>Rotation :</source>
        <translation>Drehung:</translation>
    </message>
    <message>
        <source>Rotation</source>
        <translation>Drehung</translation>
    </message>
    <message>
        <source>Touch mode</source>
        <translation>Berührungsmodus</translation>
    </message>
    <message>
        <source>Double Click Speed</source>
        <translation>Doppelklick-Tempo</translation>
    </message>
    <message>
        <source>Double click speed</source>
        <translation>Doppelklick-Tempo</translation>
    </message>
    <message>
        <source>Double Click Area</source>
        <translation>Doppelklick-Bereich</translation>
    </message>
    <message>
        <source>Double click area</source>
        <translation>Doppelklick-Bereich</translation>
    </message>
    <message>
        <source>Right Click Response Time</source>
        <translation>Ansprechzeit für Rechtsklick</translation>
    </message>
    <message>
        <source>Right click response time</source>
        <translation>Ansprechzeit für Rechtsklick</translation>
    </message>
    <message>
        <source>Touch Sensitivity</source>
        <translation>Berührungsempfindlichkeit</translation>
    </message>
    <message>
        <source>Touch sensitivity</source>
        <translation>Berührungsempfindlichkeit</translation>
    </message>
    <message>
        <source>Disable Touch Panel</source>
        <translation>Touchpanel abschalten</translation>
    </message>
    <message>
        <source>Touch panel</source>
        <translation>Touchpanel</translation>
    </message>
    <message>
        <source>%1: %2 was asked, the controller cannot be opened</source>
        <translation>%1: %2 wurde angefordert, der Controller kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Timing: nothing was sent, since it was not read from the controller. &quot;Refresh&quot; (F5) reads it.</source>
        <translation>Zeiten: Nichts wurde gesendet, weil sie nicht vom Controller gelesen wurden. „Aktualisieren“ (F5) liest sie.</translation>
    </message>
</context>
<context>
    <name>touch::FindingsList</name>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>In order</source>
        <translation>In Ordnung</translation>
    </message>
    <message>
        <source>Driver</source>
        <translation>Treiber</translation>
    </message>
    <message>
        <source>Controllers</source>
        <translation>Controller</translation>
    </message>
    <message>
        <source>Serial ports</source>
        <translation>Serielle Ports</translation>
    </message>
    <message>
        <source>Working folder</source>
        <translation>Arbeitsordner</translation>
    </message>
    <message>
        <source>Screens</source>
        <translation>Bildschirme</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>Versionen</translation>
    </message>
    <message>
        <source>Next: %1</source>
        <translation>Nächster Schritt: %1</translation>
    </message>
    <message>
        <source>Search COM ports</source>
        <translation>COM-Ports durchsuchen</translation>
    </message>
    <message>
        <source>Ask again</source>
        <translation>Erneut fragen</translation>
    </message>
</context>
<context>
    <name>touch::FingerSpinBox</name>
    <message>
        <source>%1: less</source>
        <translation>%1: weniger</translation>
    </message>
    <message>
        <source>%1: more</source>
        <translation>%1: mehr</translation>
    </message>
</context>
<context>
    <name>touch::GuideWindow</name>
    <message>
        <source>User guide</source>
        <translation>Handbuch</translation>
    </message>
    <message>
        <source>Chapters</source>
        <translation>Kapitel</translation>
    </message>
    <message>
        <source>The user guide is in English.</source>
        <translation>Das Handbuch ist auf Englisch.</translation>
    </message>
    <message>
        <source>Back to what was shown before</source>
        <translation>Zurück zu dem, was vorher zu sehen war</translation>
    </message>
    <message>
        <source>Forward again</source>
        <translation>Wieder vor</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>Finds a text (Ctrl+F)</source>
        <translation>Sucht einen Text (Strg+F)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Closes the user guide (Esc)</source>
        <translation>Schließt das Handbuch (Esc)</translation>
    </message>
    <message>
        <source>Text to find</source>
        <translation>Gesuchter Text</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>The next place (Enter, F3)</source>
        <translation>Die nächste Stelle (Eingabe, F3)</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
</context>
<context>
    <name>touch::ScreenKeyboard</name>
    <message>
        <source>Delete the last character</source>
        <translation>Letztes Zeichen löschen</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>To the next field</source>
        <translation>Zum nächsten Feld</translation>
    </message>
    <message>
        <source>Ke&amp;yboard</source>
        <translation>Tast&amp;atur</translation>
    </message>
    <message>
        <source>Shows keys to touch</source>
        <translation>Zeigt Tasten zum Antippen</translation>
    </message>
</context>
<context>
    <name>touch::StatusLine</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>OK: %1</source>
        <translation>OK: %1</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Error: %1</source>
        <translation>Fehler: %1</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Note: %1</source>
        <translation>Hinweis: %1</translation>
    </message>
</context>
<context>
    <name>touch::WindowManners</name>
    <message>
        <source>A whole number from %1 to %2</source>
        <translation>Eine ganze Zahl von %1 bis %2</translation>
    </message>
    <message>
        <source>A number from %1 to %2</source>
        <translation>Eine Zahl von %1 bis %2</translation>
    </message>
</context>
<context>
    <name>touch::commission::frmCommission</name>
    <message>
        <source>Serial &amp;number:</source>
        <translation>Serien&amp;nummer:</translation>
    </message>
    <message>
        <source>&amp;Operator:</source>
        <translation>Bearb&amp;eiter:</translation>
    </message>
    <message>
        <source>&amp;Place:</source>
        <translation>&amp;Ort:</translation>
    </message>
    <message>
        <source>No&amp;te:</source>
        <translation>No&amp;tiz:</translation>
    </message>
    <message>
        <source>Takes about %1 seconds.</source>
        <translation>Dauert etwa %1 Sekunden.</translation>
    </message>
    <message>
        <source>Takes about %1 minutes.</source>
        <translation>Dauert etwa %1 Minuten.</translation>
    </message>
    <message>
        <source>open</source>
        <translation>offen</translation>
    </message>
    <message>
        <source>skipped</source>
        <translation>übersprungen</translation>
    </message>
    <message>
        <source>problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>done</source>
        <translation>erledigt</translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <translation>&amp;Starten</translation>
    </message>
    <message>
        <source>S&amp;kip …</source>
        <translation>Ü&amp;berspringen …</translation>
    </message>
    <message>
        <source>S&amp;et them so</source>
        <translation>So e&amp;instellen</translation>
    </message>
    <message>
        <source>Commissioning</source>
        <translation>Inbetriebnahme</translation>
    </message>
    <message>
        <source>How much of the run is done</source>
        <translation>Wie viel erledigt ist</translation>
    </message>
    <message>
        <source>Steps</source>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>%1 targets</source>
        <translation>%1 Ziele</translation>
    </message>
    <message>
        <source>Calibrate &amp;with:</source>
        <translation>Kalibrieren &amp;mit:</translation>
    </message>
    <message>
        <source>Lea&amp;ve</source>
        <translation>&amp;Verlassen</translation>
    </message>
    <message>
        <source>Skipped: %1</source>
        <translation>Übersprungen: %1</translation>
    </message>
    <message>
        <source>The sheet is in the folder %1: sheet.pdf, sheet.html, sheet.json.</source>
        <translation>Das Blatt ist im Ordner %1: sheet.pdf, sheet.html, sheet.json.</translation>
    </message>
    <message>
        <source>&amp;Repeat</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Why do you skip this step? The reason stands on the sheet.</source>
        <translation>Warum überspringen Sie diesen Schritt? Der Grund steht auf dem Blatt.</translation>
    </message>
    <message>
        <source>Please wait …</source>
        <translation>Bitte warten …</translation>
    </message>
    <message>
        <source>Or&amp;der:</source>
        <translation>A&amp;uftrag:</translation>
    </message>
    <message>
        <source>Ne&amp;xt</source>
        <translation>Weite&amp;r</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Has the driver open the controller&apos;s port again</source>
        <translation>Lässt den Treiber den Port des Controllers wieder öffnen</translation>
    </message>
    <message>
        <source>Switch the &amp;panel on</source>
        <translation>Panel &amp;einschalten</translation>
    </message>
    <message>
        <source>Has the controller report touches again</source>
        <translation>Lässt den Controller wieder Berührungen melden</translation>
    </message>
    <message>
        <source>C&amp;hoose another folder …</source>
        <translation>Anderen &amp;Ordner wählen …</translation>
    </message>
    <message>
        <source>Working folder</source>
        <translation>Arbeitsordner</translation>
    </message>
    <message>
        <source>Take the port &amp;back</source>
        <translation>&amp;Port zurückholen</translation>
    </message>
    <message>
        <source>Saves the run and the parameters in another folder</source>
        <translation>Speichert den Ablauf und die Parameter in einem anderen Ordner</translation>
    </message>
    <message>
        <source>The run is now saved in %1. To continue it after a restart, start the program with --work-dir and this folder.</source>
        <translation>Der Ablauf ist jetzt in %1 gespeichert. Um ihn nach einem Neustart fortzusetzen, starten Sie das Programm mit --work-dir und diesem Ordner.</translation>
    </message>
    <message>
        <source>All of it in one file, to hand over and to keep: %1</source>
        <translation>Alles in einer Datei, zum Übergeben und Aufbewahren: %1</translation>
    </message>
    <message>
        <source>Sho&amp;w the sheet</source>
        <translation>Blatt an&amp;zeigen</translation>
    </message>
    <message>
        <source>%1, simulated</source>
        <translation>%1, simuliert</translation>
    </message>
</context>
<context>
    <name>touch::commission::frmCommissionStart</name>
    <message>
        <source>Commission a panel</source>
        <translation>Ein Panel in Betrieb nehmen</translation>
    </message>
    <message>
        <source>Leads you from the plugged cable to the sheet that you hand over. You can stop at any time: everything is kept, and the run goes on where it was.</source>
        <translation>Führt Sie vom gesteckten Kabel bis zu dem Blatt, das Sie übergeben. Sie können jederzeit aufhören: alles wird behalten, und es geht da weiter, wo Sie waren.</translation>
    </message>
    <message>
        <source>A new run</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>&amp;Measurement:</source>
        <translation>&amp;Messung:</translation>
    </message>
    <message>
        <source>The panel is &amp;for:</source>
        <translation>&amp;Zweck des Panels:</translation>
    </message>
    <message>
        <source>&amp;Begin</source>
        <translation>&amp;Beginnen</translation>
    </message>
    <message>
        <source>Lea&amp;ve</source>
        <translation>&amp;Verlassen</translation>
    </message>
    <message>
        <source>Not finished yet</source>
        <translation>Noch nicht fertig</translation>
    </message>
    <message>
        <source>Go on with %1, begun %2, %3 % done</source>
        <translation>Weiter mit %1, begonnen am %2, %3 % erledigt</translation>
    </message>
    <message>
        <source>a panel without a serial number</source>
        <translation>einem Panel ohne Seriennummer</translation>
    </message>
    <message>
        <source>quick: ten lines, nine taps, coverage (about %1 minutes in all)</source>
        <translation>schnell: zehn Linien, neun Tipps, Abdeckung (insgesamt etwa %1 Minuten)</translation>
    </message>
    <message>
        <source>full: all lines, 25 targets, resting finger, coverage (about %1 minutes)</source>
        <translation>vollständig: alle Linien, 25 Ziele, ruhender Finger, Abdeckung (etwa %1 Minuten)</translation>
    </message>
    <message>
        <source>C&amp;hoose …</source>
        <translation>&amp;Wählen …</translation>
    </message>
    <message>
        <source>Saved in:</source>
        <translation>Gespeichert in:</translation>
    </message>
    <message>
        <source>Chooses the folder that runs are saved in</source>
        <translation>Wählt den Ordner, in dem Abläufe gespeichert werden</translation>
    </message>
</context>
<context>
    <name>touch::commission::frmSheetView</name>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
</context>
<context>
    <name>touch::frmBytesPanel</name>
    <message>
        <source>&amp;Send bytes</source>
        <translation>Bytes &amp;senden</translation>
    </message>
    <message>
        <source>Command to begin with</source>
        <translation>Befehl als Anfang</translation>
    </message>
    <message>
        <source>Begin with a command …</source>
        <translation>Mit einem Befehl anfangen …</translation>
    </message>
    <message>
        <source>Digit of the command</source>
        <translation>Ziffer des Befehls</translation>
    </message>
    <message>
        <source>Digit</source>
        <translation>Ziffer</translation>
    </message>
    <message>
        <source>Bytes to send</source>
        <translation>Bytes zum Senden</translation>
    </message>
    <message>
        <source>How they are typed</source>
        <translation>Wie sie getippt sind</translation>
    </message>
    <message>
        <source>As text</source>
        <translation>Als Text</translation>
    </message>
    <message>
        <source>In hexadecimal</source>
        <translation>Hexadezimal</translation>
    </message>
    <message>
        <source>What is sent, byte by byte</source>
        <translation>Was gesendet wird, Byte für Byte</translation>
    </message>
    <message>
        <source>Reply, text</source>
        <translation>Antwort, Text</translation>
    </message>
    <message>
        <source>Reply, hexadecimal</source>
        <translation>Antwort, hexadezimal</translation>
    </message>
    <message>
        <source>Choose the digit first.</source>
        <translation>Wählen Sie zuerst die Ziffer.</translation>
    </message>
    <message>
        <source>%1
%2
Bytes: %3</source>
        <translation>%1
%2
Bytes: %3</translation>
    </message>
    <message>
        <source>W&amp;hat to send:</source>
        <translation>&amp;Bytes zum Senden:</translation>
    </message>
    <message>
        <source>Save &amp;list …</source>
        <translation>&amp;Liste speichern …</translation>
    </message>
    <message>
        <source>Lo&amp;ad list …</source>
        <translation>Liste l&amp;aden …</translation>
    </message>
    <message>
        <source>The lines that were sent, which Up and Down bring back, as a script</source>
        <translation>Die gesendeten Zeilen, die Auf und Ab zurückholen, als Skript</translation>
    </message>
    <message>
        <source>Save what was sent</source>
        <translation>Gesendetes speichern</translation>
    </message>
    <message>
        <source>Scripts (*.tus)</source>
        <translation>Skripte (*.tus)</translation>
    </message>
    <message>
        <source>Saved in %1</source>
        <translation>Gespeichert in %1</translation>
    </message>
    <message>
        <source>Load what was sent</source>
        <translation>Gesendetes laden</translation>
    </message>
    <message>
        <source>Scripts (*.tus);;All files (*)</source>
        <translation>Skripte (*.tus);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Lines loaded: %1. Press Up in the line.</source>
        <translation>Geladene Zeilen: %1. Drücken Sie in der Zeile auf Auf.</translation>
    </message>
</context>
<context>
    <name>touch::frmCal</name>
    <message>
        <source>&amp;Start</source>
        <translation>&amp;Start</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>EXIT</source>
        <translation>ENDE</translation>
    </message>
    <message>
        <source>Calibration</source>
        <translation>Kalibrierung</translation>
    </message>
    <message>
        <source>Calibration targets</source>
        <translation>Kalibrierziele</translation>
    </message>
    <message>
        <source>Time used of this target&apos;s</source>
        <translation>Verbrauchte Zeit für dieses Ziel</translation>
    </message>
    <message>
        <source>Storing …</source>
        <translation>Speichern …</translation>
    </message>
    <message>
        <source>The target to touch pulses; the others are still.</source>
        <translation>Das zu berührende Ziel pulsiert; die anderen sind ruhig.</translation>
    </message>
    <message>
        <source>Touch the centre of the pulsing target until it turns yellow.</source>
        <translation>Berühren Sie die Mitte des pulsierenden Ziels, bis es gelb wird.</translation>
    </message>
    <message>
        <source>The bar shows the time used. Esc cancels.</source>
        <translation>Der Balken zeigt die verbrauchte Zeit. Esc bricht ab.</translation>
    </message>
</context>
<context>
    <name>touch::frmCalibrationPage</name>
    <message>
        <source>&amp;2 points</source>
        <translation>&amp;2 Punkte</translation>
    </message>
    <message>
        <source>Quick: corrects position and size only.</source>
        <translation>Schnell: berichtigt nur Lage und Größe.</translation>
    </message>
    <message>
        <source>&amp;3 points</source>
        <translation>&amp;3 Punkte</translation>
    </message>
    <message>
        <source>Also corrects a tilted panel.</source>
        <translation>Berichtigt auch ein schief eingebautes Panel.</translation>
    </message>
    <message>
        <source>&amp;5 points</source>
        <translation>&amp;5 Punkte</translation>
    </message>
    <message>
        <source>The usual choice for a new panel.</source>
        <translation>Die übliche Wahl für ein neues Panel.</translation>
    </message>
    <message>
        <source>&amp;9 points</source>
        <translation>&amp;9 Punkte</translation>
    </message>
    <message>
        <source>For large panels and the highest accuracy.</source>
        <translation>Für große Panels und höchste Genauigkeit.</translation>
    </message>
    <message>
        <source>Touch the targets one after the other. If you don&apos;t touch a target before the bar reaches the right edge, calibration stops and nothing is saved.</source>
        <translation>Berühren Sie die Ziele nacheinander. Ist ein Ziel nicht berührt, wenn der Balken den rechten Rand erreicht, endet die Kalibrierung, und nichts wird gespeichert.</translation>
    </message>
    <message>
        <source>mean %1, at most %2 of the panel&apos;s width</source>
        <translation>im Mittel %1, höchstens %2 der Panelbreite</translation>
    </message>
    <message>
        <source>Simulated panel&apos;s error before: %1
Simulated panel&apos;s error now: %2</source>
        <translation>Fehler des simulierten Panels vorher: %1
Fehler des simulierten Panels jetzt: %2</translation>
    </message>
    <message>
        <source>Simulated panel&apos;s error: %1</source>
        <translation>Fehler des simulierten Panels: %1</translation>
    </message>
    <message>
        <source>Check &amp;after calibrating</source>
        <translation>Nach &amp;dem Kalibrieren prüfen</translation>
    </message>
    <message>
        <source>How far a good touch may land from its cross, of the diagonal</source>
        <translation>Wie weit eine gute Berührung von ihrem Kreuz landen darf, von der Diagonale</translation>
    </message>
    <message>
        <source>You touch five crosses. If touches land too far off, the calibration from before is put back: also when you can no longer press anything.</source>
        <translation>Sie berühren fünf Kreuze. Landen Berührungen zu weit daneben, wird die vorige Kalibrierung zurückgeholt: auch wenn Sie nichts mehr drücken können.</translation>
    </message>
    <message>
        <source>&amp;Check</source>
        <translation>&amp;Prüfen</translation>
    </message>
    <message>
        <source>Checks the calibration that the controller has now.</source>
        <translation>Prüft die Kalibrierung, die der Controller jetzt hat.</translation>
    </message>
    <message>
        <source>Li&amp;mit, of the diagonal:</source>
        <translation>&amp;Grenze, von der Diagonale:</translation>
    </message>
</context>
<context>
    <name>touch::frmCheck</name>
    <message>
        <source>&amp;Keep (Enter)</source>
        <translation>&amp;Behalten (Eingabe)</translation>
    </message>
    <message>
        <source>&amp;Put back (Esc)</source>
        <translation>&amp;Zurückholen (Esc)</translation>
    </message>
    <message>
        <source>&amp;Close (Esc)</source>
        <translation>S&amp;chließen (Esc)</translation>
    </message>
    <message>
        <source>Check of the calibration</source>
        <translation>Prüfung der Kalibrierung</translation>
    </message>
    <message>
        <source>Crosses to touch</source>
        <translation>Kreuze zum Berühren</translation>
    </message>
    <message>
        <source>The cross to touch has a yellow ring.</source>
        <translation>Das Kreuz, das zu berühren ist, hat einen gelben Ring.</translation>
    </message>
    <message>
        <source>Time used for this touch</source>
        <translation>Verbrauchte Zeit für diese Berührung</translation>
    </message>
    <message>
        <source>%1: too far</source>
        <translation>%1: zu weit</translation>
    </message>
</context>
<context>
    <name>touch::frmCommandPanel</name>
    <message>
        <source>&amp;Send</source>
        <translation>&amp;Senden</translation>
    </message>
    <message>
        <source>DATA VALUE</source>
        <translation>DATENWERT</translation>
    </message>
    <message>
        <source>&amp;Command:</source>
        <translation>&amp;Befehl:</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Reply, text</source>
        <translation>Antwort, Text</translation>
    </message>
    <message>
        <source>Reply, hexadecimal</source>
        <translation>Antwort, hexadezimal</translation>
    </message>
    <message>
        <source>Reply, remark</source>
        <translation>Antwort, Anmerkung</translation>
    </message>
    <message>
        <source>&amp;M01 Mode</source>
        <translation>&amp;M01-Modus</translation>
    </message>
    <message>
        <source>E&amp;02 Mode</source>
        <translation>E&amp;02-Modus</translation>
    </message>
    <message>
        <source>&amp;quorvane</source>
        <translation>&amp;quorvane</translation>
    </message>
    <message>
        <source>EEP &amp;Address</source>
        <translation>EEP-&amp;Adresse</translation>
    </message>
    <message>
        <source>EEP Address</source>
        <translation>EEP-Adresse</translation>
    </message>
    <message>
        <source>&amp;HighByte</source>
        <translation>&amp;HighByte</translation>
    </message>
    <message>
        <source>&amp;LowByte</source>
        <translation>&amp;LowByte</translation>
    </message>
</context>
<context>
    <name>touch::frmCommissionPage</name>
    <message>
        <source>One guided run: look whether anything is in the way, name the panel, keep its parameters, compare the settings, calibrate, check the calibration, measure, and write the sheet that you hand over.</source>
        <translation>Ein geführter Ablauf: nachsehen, ob etwas im Weg steht, das Panel benennen, seine Parameter sichern, die Einstellungen vergleichen, kalibrieren, die Kalibrierung prüfen, messen und das Blatt schreiben, das Sie übergeben.</translation>
    </message>
    <message>
        <source>Ctrl+K</source>
        <translation>Strg+K</translation>
    </message>
    <message>
        <source>You can stop at any time, and so can the power: the run goes on where it was. Parameters and calibration of before are kept, and a calibration that does not pass its check is taken back by itself.</source>
        <translation>Sie können jederzeit aufhören, auch der Strom darf ausfallen: es geht da weiter, wo Sie waren. Parameter und Kalibrierung von vorher bleiben erhalten, und eine Kalibrierung, die ihre Prüfung nicht besteht, wird von selbst zurückgenommen.</translation>
    </message>
    <message>
        <source>Commission a &amp;panel</source>
        <translation>Ein &amp;Panel in Betrieb nehmen</translation>
    </message>
</context>
<context>
    <name>touch::frmConsolePanel</name>
    <message>
        <source>Everything</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Commands and answers</source>
        <translation>Befehle und Antworten</translation>
    </message>
    <message>
        <source>Sent</source>
        <translation>Gesendet</translation>
    </message>
    <message>
        <source>Received</source>
        <translation>Empfangen</translation>
    </message>
    <message>
        <source>Reports</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Matches onl&amp;y</source>
        <translation>Nur &amp;Treffer</translation>
    </message>
    <message>
        <source>Pa&amp;use view</source>
        <translation>A&amp;nsicht anhalten</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>Konsole</translation>
    </message>
    <message>
        <source>Recording goes on meanwhile</source>
        <translation>Die Aufzeichnung läuft dabei weiter</translation>
    </message>
    <message>
        <source>Lines to show</source>
        <translation>Angezeigte Zeilen</translation>
    </message>
    <message>
        <source>Text to look for</source>
        <translation>Gesuchter Text</translation>
    </message>
    <message>
        <source>Search text</source>
        <translation>Suchen nach …</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>Su&amp;chen</translation>
    </message>
    <message>
        <source>C&amp;opy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Sa&amp;ve …</source>
        <translation>Spe&amp;ichern …</translation>
    </message>
    <message>
        <source>Copied.</source>
        <translation>Kopiert.</translation>
    </message>
    <message>
        <source>Save the console</source>
        <translation>Konsole speichern</translation>
    </message>
    <message>
        <source>Text (*.txt)</source>
        <translation>Text (*.txt)</translation>
    </message>
    <message>
        <source>Saved in %1</source>
        <translation>Gespeichert in %1</translation>
    </message>
    <message>
        <source>Nothing found.</source>
        <translation>Nichts gefunden.</translation>
    </message>
    <message>
        <source>Times of the lines</source>
        <translation>Zeiten der Zeilen</translation>
    </message>
    <message>
        <source>Since the start</source>
        <translation>Seit dem Beginn</translation>
    </message>
    <message>
        <source>Since the last</source>
        <translation>Seit der letzten</translation>
    </message>
    <message>
        <source>Time of day</source>
        <translation>Uhrzeit</translation>
    </message>
    <message>
        <source>Place among all lines</source>
        <translation>Stelle unter allen Zeilen</translation>
    </message>
    <message>
        <source>Direction: &gt; sent, &lt; received, = a touch report</source>
        <translation>Richtung: &gt; gesendet, &lt; empfangen, = eine Berührungsmeldung</translation>
    </message>
    <message>
        <source>Searching …</source>
        <translation>Suche …</translation>
    </message>
</context>
<context>
    <name>touch::frmControllerPage</name>
    <message>
        <source>&amp;Info</source>
        <translation>&amp;Info</translation>
    </message>
    <message>
        <source>Search &amp;COM ports</source>
        <translation>COM-&amp;Ports durchsuchen</translation>
    </message>
    <message>
        <source>Controllers</source>
        <translation>Controller</translation>
    </message>
    <message>
        <source> No</source>
        <translation> Nr.</translation>
    </message>
    <message>
        <source> Device</source>
        <translation> Gerät</translation>
    </message>
    <message>
        <source>Controller information</source>
        <translation>Controller-Information</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation>&amp;Aktualisieren</translation>
    </message>
    <message>
        <source>Search for controllers again (F5)</source>
        <translation>Sucht erneut nach Controllern (F5)</translation>
    </message>
    <message>
        <source>Look for a serial controller on COM16 down to COM1</source>
        <translation>Sucht einen seriellen Controller an COM16 bis hinab zu COM1</translation>
    </message>
    <message>
        <source>Unit type:</source>
        <translation>Typ:</translation>
    </message>
    <message>
        <source>Firmware:</source>
        <translation>Firmware:</translation>
    </message>
    <message>
        <source>No controller is listed. Check that the touch driver is installed and the controller is connected and powered, then press Refresh. The page &quot;Doctor&quot; says what is missing.</source>
        <translation>Kein Controller ist aufgeführt. Prüfen Sie, ob der Touch-Treiber installiert und der Controller angeschlossen und eingeschaltet ist, und drücken Sie dann „Aktualisieren“. Die Seite „Diagnose“ sagt, was fehlt.</translation>
    </message>
    <message>
        <source>Serial</source>
        <translation>Seriell</translation>
    </message>
    <message>
        <source>USB</source>
        <translation>USB</translation>
    </message>
    <message>
        <source>%1, firmware %2</source>
        <translation>%1, Firmware %2</translation>
    </message>
    <message>
        <source>answers</source>
        <translation>antwortet</translation>
    </message>
    <message>
        <source>does not answer</source>
        <translation>antwortet nicht</translation>
    </message>
    <message>
        <source>not asked yet</source>
        <translation>noch nicht gefragt</translation>
    </message>
    <message>
        <source>What is connected to what</source>
        <translation>Was womit verbunden ist</translation>
    </message>
    <message>
        <source>The panel&apos;s tail is plugged into the controller, the controller into the computer, and it has power.</source>
        <translation>Die Fahne des Panels steckt im Controller, der Controller im Rechner, und er hat Strom.</translation>
    </message>
</context>
<context>
    <name>touch::frmDoctorPage</name>
    <message>
        <source>Findings</source>
        <translation>Befunde</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation>&amp;Aktualisieren</translation>
    </message>
    <message>
        <source>Save dia&amp;gnostics file …</source>
        <translation>&amp;Diagnosedatei speichern …</translation>
    </message>
    <message>
        <source>Packs all that somebody needs who is to help you into one file</source>
        <translation>Packt alles in eine Datei, was jemand braucht, der Ihnen helfen soll</translation>
    </message>
    <message>
        <source>Save diagnostics file</source>
        <translation>Diagnosedatei speichern</translation>
    </message>
    <message>
        <source>ZIP (*.zip)</source>
        <translation>ZIP (*.zip)</translation>
    </message>
    <message>
        <source>Examines everything, and asks each controller what it is</source>
        <translation>Prüft alles und fragt jeden Controller nach seiner Kennung</translation>
    </message>
    <message>
        <source>Checking …</source>
        <translation>Prüfung läuft …</translation>
    </message>
    <message>
        <source>Checking: %1 …</source>
        <translation>Prüfung: %1 …</translation>
    </message>
    <message>
        <source>Packing the diagnostics file …</source>
        <translation>Die Diagnosedatei wird gepackt …</translation>
    </message>
    <message>
        <source>Save it?</source>
        <translation>Speichern?</translation>
    </message>
    <message>
        <source>Nothing was saved.</source>
        <translation>Nichts wurde gespeichert.</translation>
    </message>
</context>
<context>
    <name>touch::frmDraw</name>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Band</source>
        <translation>&amp;Band</translation>
    </message>
    <message>
        <source>Drawing</source>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>Drawing area</source>
        <translation>Zeichenfläche</translation>
    </message>
    <message>
        <source>Draw with the mouse: the ink appears where the simulated controller reports it.
F1 helps, Esc leaves.</source>
        <translation>Zeichnen Sie mit der Maus: Die Tinte erscheint, wo der simulierte Controller sie meldet.
F1 hilft, Esc beendet.</translation>
    </message>
    <message>
        <source>Draw with your finger.
F1 helps, Esc leaves.</source>
        <translation>Zeichnen Sie mit dem Finger.
F1 hilft, Esc beendet.</translation>
    </message>
    <message>
        <source>Keys; tap one to use it</source>
        <translation>Tasten; tippen Sie auf eine, um sie zu benutzen</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Deviations of the last stroke; tap to put away</source>
        <translation>Abweichungen des letzten Strichs; Tippen legt sie weg</translation>
    </message>
    <message>
        <source>Results of the guide lines</source>
        <translation>Ergebnisse der Hilfslinien</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Keys and commands (F1)</source>
        <translation>Tasten und Befehle (F1)</translation>
    </message>
    <message>
        <source>Takes the last recorded stroke back (D)</source>
        <translation>Nimmt den zuletzt aufgezeichneten Strich zurück (D)</translation>
    </message>
    <message>
        <source>Show the tolerance band along the guide lines</source>
        <translation>Zeigt das Toleranzband entlang der Hilfslinien</translation>
    </message>
    <message>
        <source>Tolerance in tenths of a percent</source>
        <translation>Toleranz in Zehntelprozent</translation>
    </message>
    <message>
        <source>Save drawing</source>
        <translation>Zeichnung speichern</translation>
    </message>
    <message>
        <source>View drawing</source>
        <translation>Zeichnung ansehen</translation>
    </message>
    <message>
        <source>What is drawn on the panel, and the guide lines</source>
        <translation>Was auf dem Panel gezeichnet wird, und die Hilfslinien</translation>
    </message>
    <message>
        <source>%1, beyond the tolerance</source>
        <translation>%1, außerhalb der Toleranz</translation>
    </message>
    <message>
        <source>&amp;Menu</source>
        <translation>&amp;Menü</translation>
    </message>
    <message>
        <source>Commands, by right button as well</source>
        <translation>Befehle, auch mit der rechten Taste</translation>
    </message>
</context>
<context>
    <name>touch::frmFooter</name>
    <message>
        <source>&amp;Stop searching</source>
        <translation>Suche &amp;stoppen</translation>
    </message>
    <message>
        <source>Re&amp;lease comport and Exit</source>
        <translation>Port &amp;freigeben und beenden</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>The user guide, at what is shown here (F1)</source>
        <translation>Das Handbuch, bei dem, was hier zu sehen ist (F1)</translation>
    </message>
</context>
<context>
    <name>touch::frmGreeting</name>
    <message>
        <source>What do you want to do first?</source>
        <translation>Was möchten Sie zuerst tun?</translation>
    </message>
    <message>
        <source>Cali&amp;brate a panel</source>
        <translation>Panel ka&amp;librieren</translation>
    </message>
    <message>
        <source>Goes to the page &quot;Calibration&quot;.</source>
        <translation>Öffnet die Seite „Kalibrierung“.</translation>
    </message>
    <message>
        <source>&amp;Prove a panel</source>
        <translation>Panel p&amp;rüfen</translation>
    </message>
    <message>
        <source>Goes to the page &quot;Tests&quot;.</source>
        <translation>Öffnet die Seite „Tests“.</translation>
    </message>
    <message>
        <source>Tal&amp;k to a controller</source>
        <translation>Mit &amp;Controller sprechen</translation>
    </message>
    <message>
        <source>Opens the serial debugger, which asks for the service password.</source>
        <translation>Öffnet den seriellen Debugger, der nach dem Service-Passwort fragt.</translation>
    </message>
    <message>
        <source>N&amp;ot now</source>
        <translation>&amp;Nicht jetzt</translation>
    </message>
    <message>
        <source>All of it is on the pages, too. This is not asked again.</source>
        <translation>Alles ist auch auf den Seiten zu finden. Diese Frage kommt nicht wieder.</translation>
    </message>
</context>
<context>
    <name>touch::frmHeader</name>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>The picture &quot;pic01.jpg&quot; of the working folder</source>
        <translation>Das Bild „pic01.jpg“ des Arbeitsordners</translation>
    </message>
    <message>
        <source>Simulation: use the mouse as your finger</source>
        <translation>Simulierte Controller: Die Maus ist der Finger</translation>
    </message>
    <message>
        <source>The picture %1 cannot be shown: expected %2, found %3</source>
        <translation>Das Bild %1 kann nicht gezeigt werden: erwartet: %2, gefunden: %3</translation>
    </message>
    <message>
        <source>The picture %1 cannot be shown: %2</source>
        <translation>Das Bild %1 kann nicht angezeigt werden: %2</translation>
    </message>
    <message>
        <source>The icon %1 cannot be shown: expected %2, found %3</source>
        <translation>Das Symbol %1 kann nicht gezeigt werden: erwartet: %2, gefunden: %3</translation>
    </message>
    <message>
        <source>The icon %1 cannot be shown: it holds no picture</source>
        <translation>Das Symbol %1 kann nicht angezeigt werden: Es enthält kein Bild</translation>
    </message>
</context>
<context>
    <name>touch::frmLinePanel</name>
    <message>
        <source>U&amp;se these</source>
        <translation>&amp;So verwenden</translation>
    </message>
    <message>
        <source>Send brea&amp;k</source>
        <translation>&amp;Break senden</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Geschwindigkeit</translation>
    </message>
    <message>
        <source>Data bits</source>
        <translation>Datenbits</translation>
    </message>
    <message>
        <source>Parity</source>
        <translation>Parität</translation>
    </message>
    <message>
        <source>Stop bits</source>
        <translation>Stoppbits</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Even</source>
        <translation>Gerade</translation>
    </message>
    <message>
        <source>Odd</source>
        <translation>Ungerade</translation>
    </message>
    <message>
        <source>For this port until the debugger is closed</source>
        <translation>Für diesen Port, bis der Debugger geschlossen wird</translation>
    </message>
    <message>
        <source>This port does not tell of its other wires.</source>
        <translation>Dieser Port sagt nichts über seine übrigen Leitungen.</translation>
    </message>
    <message>
        <source>Bytes sent: %1, received: %2, damaged: %3.</source>
        <translation>Bytes gesendet: %1, empfangen: %2, beschädigt: %3.</translation>
    </message>
    <message>
        <source>Stop bit missing: %1, wrong parity: %2, overruns: %3, breaks: %4.</source>
        <translation>Stoppbit fehlt: %1, falsche Parität: %2, Überläufe: %3, Breaks: %4.</translation>
    </message>
</context>
<context>
    <name>touch::frmMain</name>
    <message>
        <source>Controller</source>
        <translation>Controller</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Calibration</source>
        <translation>Kalibrierung</translation>
    </message>
    <message>
        <source>Maintenance</source>
        <translation>Wartung</translation>
    </message>
    <message>
        <source>Parameters</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>Tests</source>
        <translation>Tests</translation>
    </message>
    <message>
        <source>Doctor</source>
        <translation>Diagnose</translation>
    </message>
    <message>
        <source>Commission</source>
        <translation>Inbetriebnahme</translation>
    </message>
</context>
<context>
    <name>touch::frmMaintenancePage</name>
    <message>
        <source>Driver library</source>
        <translation>Treiberbibliothek</translation>
    </message>
    <message>
        <source>Written to a new file in the working folder each time</source>
        <translation>Jedes Mal in eine neue Datei im Arbeitsordner</translation>
    </message>
    <message>
        <source>Panel on monitor:</source>
        <translation>Panel auf Monitor:</translation>
    </message>
    <message>
        <source>Driver library:</source>
        <translation>Treiberbibliothek:</translation>
    </message>
    <message>
        <source>Ad&amp;vanced …</source>
        <translation>&amp;Erweitert …</translation>
    </message>
    <message>
        <source>Shows the advanced functions (key I)</source>
        <translation>Zeigt die erweiterten Funktionen (Taste I)</translation>
    </message>
    <message>
        <source>Serial de&amp;bugger …</source>
        <translation>Serieller &amp;Debugger …</translation>
    </message>
    <message>
        <source>Sensor &amp;pins …</source>
        <translation>Sensorbele&amp;gung …</translation>
    </message>
    <message>
        <source>The trace is off.</source>
        <translation>Der Mitschnitt ist aus.</translation>
    </message>
    <message>
        <source>Tracing to %1</source>
        <translation>Mitschnitt in %1</translation>
    </message>
    <message>
        <source>U&amp;ndo</source>
        <translation>Rüc&amp;kgängig</translation>
    </message>
    <message>
        <source>Tra&amp;ce every driver call and serial transfer</source>
        <translation>&amp;Jeden Aufruf und jede Übertragung mitschneiden</translation>
    </message>
    <message>
        <source>Defaul&amp;ts</source>
        <translation>&amp;Werkseinstellungen</translation>
    </message>
    <message>
        <source>Restores the factory settings. The current parameters are saved in the folder &quot;backup&quot; first.</source>
        <translation>Stellt die Werkseinstellungen wieder her. Die derzeitigen Parameter werden vorher im Ordner „backup“ gesichert.</translation>
    </message>
    <message>
        <source>Puts back the parameters from before the last change.</source>
        <translation>Stellt die Parameter von vor der letzten Änderung wieder her.</translation>
    </message>
    <message>
        <source>R&amp;eset</source>
        <translation>Neus&amp;tart</translation>
    </message>
    <message>
        <source>Restarts the controller (like switching it off and on).</source>
        <translation>Startet den Controller neu (wie Aus- und Einschalten).</translation>
    </message>
    <message>
        <source>Restoring the defaults …</source>
        <translation>Die Werkseinstellungen werden wiederhergestellt …</translation>
    </message>
    <message>
        <source>Writing the parameters back …</source>
        <translation>Die Parameter werden zurückgeschrieben …</translation>
    </message>
    <message>
        <source>Resetting the controller …</source>
        <translation>Der Controller wird neu gestartet …</translation>
    </message>
</context>
<context>
    <name>touch::frmMonitorRow</name>
    <message>
        <source>Monitor that the panel covers</source>
        <translation>Monitor, den das Panel bedeckt</translation>
    </message>
    <message>
        <source>Identif&amp;y</source>
        <translation>&amp;Identifizieren</translation>
    </message>
    <message>
        <source>Shows its number on each monitor</source>
        <translation>Zeigt auf jedem Monitor seine Nummer</translation>
    </message>
    <message>
        <source>&amp;Assign</source>
        <translation>&amp;Zuweisen</translation>
    </message>
    <message>
        <source>%1: %2, %3 x %4</source>
        <translation>%1: %2, %3 x %4</translation>
    </message>
</context>
<context>
    <name>touch::frmParametersPage</name>
    <message>
        <source>Parameter words</source>
        <translation>Parameterwörter</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Old high</source>
        <translation>Alt High</translation>
    </message>
    <message>
        <source>Old low</source>
        <translation>Alt Low</translation>
    </message>
    <message>
        <source>New high</source>
        <translation>Neu High</translation>
    </message>
    <message>
        <source>New low</source>
        <translation>Neu Low</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>Bytes in</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>hexa&amp;decimal</source>
        <translation>he&amp;xadezimal</translation>
    </message>
    <message>
        <source>deci&amp;mal</source>
        <translation>&amp;dezimal</translation>
    </message>
    <message>
        <source>&amp;Read</source>
        <translation>&amp;Lesen</translation>
    </message>
    <message>
        <source>&amp;Write</source>
        <translation>S&amp;chreiben</translation>
    </message>
    <message>
        <source>&amp;Clear</source>
        <translation>L&amp;eeren</translation>
    </message>
    <message>
        <source>The new values are cleared; nothing was sent.</source>
        <translation>Die neuen Werte sind geleert; es wurde nichts gesendet.</translation>
    </message>
    <message>
        <source>L&amp;oad …</source>
        <translation>L&amp;aden …</translation>
    </message>
    <message>
        <source>&amp;Save …</source>
        <translation>S&amp;peichern …</translation>
    </message>
    <message>
        <source>Com&amp;pare …</source>
        <translation>&amp;Vergleich …</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>geändert</translation>
    </message>
    <message>
        <source>Cal (*.vrq)</source>
        <translation>Kal (*.vrq)</translation>
    </message>
    <message>
        <source>Load parameters</source>
        <translation>Parameter laden</translation>
    </message>
    <message>
        <source>Compare with a file</source>
        <translation>Mit einer Datei vergleichen</translation>
    </message>
    <message>
        <source>Save parameters</source>
        <translation>Parameter speichern</translation>
    </message>
    <message>
        <source>U&amp;ndo</source>
        <translation>Rüc&amp;kgängig</translation>
    </message>
    <message>
        <source>invalid</source>
        <translation>ungültig</translation>
    </message>
    <message>
        <source>Reading the parameters …</source>
        <translation>Die Parameter werden gelesen …</translation>
    </message>
    <message>
        <source>Writing the parameters …</source>
        <translation>Die Parameter werden geschrieben …</translation>
    </message>
    <message>
        <source>Writing the parameters back …</source>
        <translation>Die Parameter werden zurückgeschrieben …</translation>
    </message>
</context>
<context>
    <name>touch::frmPasswordFrame</name>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>Passwort:</translation>
    </message>
    <message>
        <source>Simulation: the password is %1</source>
        <translation>Simulation: Das Passwort ist %1</translation>
    </message>
</context>
<context>
    <name>touch::frmPinDefine</name>
    <message>
        <source>Sensor</source>
        <translation>Sensor</translation>
    </message>
    <message>
        <source>&amp;4-wire</source>
        <translation>&amp;4-Draht</translation>
    </message>
    <message>
        <source>&amp;5-wire</source>
        <translation>&amp;5-Draht</translation>
    </message>
    <message>
        <source>&amp;Update</source>
        <translation>S&amp;chreiben</translation>
    </message>
    <message>
        <source>&amp;Put back</source>
        <translation>&amp;Zurückschreiben</translation>
    </message>
    <message>
        <source>Sensor pin definition</source>
        <translation>Anschlussbelegung des Sensors</translation>
    </message>
    <message>
        <source>Writes the mapping from before the last update</source>
        <translation>Schreibt die Belegung vor der letzten Änderung zurück</translation>
    </message>
    <message>
        <source>&amp;Read</source>
        <translation>&amp;Lesen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>Schl&amp;ießen</translation>
    </message>
    <message>
        <source>Channel</source>
        <translation>Kanal</translation>
    </message>
    <message>
        <source>Bit</source>
        <translation>Bit</translation>
    </message>
    <message>
        <source>Writing the pin definition …</source>
        <translation>Die Anschlussbelegung wird geschrieben …</translation>
    </message>
    <message>
        <source>Putting the old mapping back …</source>
        <translation>Die alte Belegung wird zurückgeschrieben …</translation>
    </message>
    <message>
        <source>Reading the pin definition …</source>
        <translation>Die Anschlussbelegung wird gelesen …</translation>
    </message>
    <message>
        <source>%1, analogue channel</source>
        <translation>%1, Analogkanal</translation>
    </message>
    <message>
        <source>%1, I/O bit</source>
        <translation>%1, E/A-Bit</translation>
    </message>
    <message>
        <source>Every channel and every bit is used once.</source>
        <translation>Jeder Kanal und jedes Bit wird einmal verwendet.</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
</context>
<context>
    <name>touch::frmPlotPanel</name>
    <message>
        <source>Curves of X, Y and the interval</source>
        <translation>Kurven von X, Y und Abstand</translation>
    </message>
    <message>
        <source>%1 reports in %2 s</source>
        <translation>%1 Meldungen in %2 s</translation>
    </message>
    <message>
        <source>X, 0 to %1</source>
        <translation>X, 0 bis %1</translation>
    </message>
    <message>
        <source>Y, 0 to %1</source>
        <translation>Y, 0 bis %1</translation>
    </message>
    <message>
        <source>Interval, up to %1 ms</source>
        <translation>Abstand, bis %1 ms</translation>
    </message>
    <message>
        <source>&amp;+</source>
        <translation>&amp;+</translation>
    </message>
    <message>
        <source>&amp;-</source>
        <translation>&amp;-</translation>
    </message>
    <message>
        <source>&amp;&lt;</source>
        <translation>&amp;&lt;</translation>
    </message>
    <message>
        <source>&amp;&gt;</source>
        <translation>&amp;&gt;</translation>
    </message>
    <message>
        <source>A&amp;ll</source>
        <translation>A&amp;lles</translation>
    </message>
    <message>
        <source>Begin &amp;anew</source>
        <translation>Von v&amp;orn</translation>
    </message>
    <message>
        <source>Recordin&amp;g …</source>
        <translation>Sic&amp;hten …</translation>
    </message>
    <message>
        <source>C&amp;SV …</source>
        <translation>C&amp;SV …</translation>
    </message>
    <message>
        <source>Curves of a recording</source>
        <translation>Kurven einer Aufzeichnung</translation>
    </message>
    <message>
        <source>Recordings (*.txt)</source>
        <translation>Aufzeichnungen (*.txt)</translation>
    </message>
    <message>
        <source>Reports in %1: %2</source>
        <translation>Meldungen in %1: %2</translation>
    </message>
    <message>
        <source>Save the reports</source>
        <translation>Meldungen speichern</translation>
    </message>
    <message>
        <source>Tables (*.csv)</source>
        <translation>Tabellen (*.csv)</translation>
    </message>
    <message>
        <source>Saved in %1</source>
        <translation>Gespeichert in %1</translation>
    </message>
    <message>
        <source>Touch the panel, or open a recording.</source>
        <translation>Berühren Sie das Panel, oder öffnen Sie eine Aufzeichnung.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Reading was ended. Reports in %1 so far: %2</source>
        <translation>Das Lesen wurde beendet. Meldungen in %1 bis dahin: %2</translation>
    </message>
    <message>
        <source>Reports: %1. Strokes: %2. Reports a second while touched: %3.
Scatter, of a resting finger its noise: X %4, Y %5 (from end to end %6 and %7).
Read together with later ones, their times reckoned from the line&apos;s speed: %8.</source>
        <translation>Meldungen: %1. Striche: %2. Meldungen je Sekunde während der Berührung: %3.
Streuung, bei ruhendem Finger das Rauschen: X %4, Y %5 (von Ende zu Ende %6 und %7).
Mit späteren zusammen gelesen, Zeit aus der Geschwindigkeit der Leitung errechnet: %8.</translation>
    </message>
    <message>
        <source>About one report in %1 is shown</source>
        <translation>Etwa jede %1. Meldung ist zu sehen</translation>
    </message>
    <message>
        <source>How much of the recording is done</source>
        <translation>Wie viel der Aufzeichnung fertig ist</translation>
    </message>
    <message>
        <source>About one report in %1 is shown; zoom in until you see all.</source>
        <translation>Etwa jede %1. Meldung ist zu sehen; näher heran sind es alle.</translation>
    </message>
    <message>
        <source>Saving was ended. Nothing was saved.</source>
        <translation>Das Speichern wurde beendet. Es wurde nichts gespeichert.</translation>
    </message>
    <message>
        <source>The recording is still being read.</source>
        <translation>Die Aufzeichnung wird noch gelesen.</translation>
    </message>
    <message>
        <source> From %1 to %2 s.</source>
        <translation> Von %1 bis %2 s.</translation>
    </message>
</context>
<context>
    <name>touch::frmPortsPanel</name>
    <message>
        <source>Find a contro&amp;ller</source>
        <translation>Contro&amp;ller suchen</translation>
    </message>
    <message>
        <source>Serial ports of this machine</source>
        <translation>Serielle Anschlüsse dieses Rechners</translation>
    </message>
    <message>
        <source>%1 was plugged in.</source>
        <translation>%1 wurde eingesteckt.</translation>
    </message>
    <message>
        <source>Open t&amp;his port</source>
        <translation>Die&amp;sen öffnen</translation>
    </message>
    <message>
        <source>Asks on each port that can be opened, at all line settings</source>
        <translation>Fragt auf jedem Port, der sich öffnen lässt, mit allen Leitungseinstellungen</translation>
    </message>
    <message>
        <source>Stop &amp;looking</source>
        <translation>Nicht &amp;länger suchen</translation>
    </message>
</context>
<context>
    <name>touch::frmRSDebug</name>
    <message>
        <source>Repor&amp;t Rate</source>
        <translation>Mel&amp;derate</translation>
    </message>
    <message>
        <source>KVD Debuger</source>
        <translation>KVD Debuger</translation>
    </message>
    <message>
        <source>Orvendalix Debuger</source>
        <translation>Orvendalix Debuger</translation>
    </message>
    <message>
        <source>Ope&amp;n port</source>
        <translation>&amp;Port öffnen</translation>
    </message>
    <message>
        <source>Search COM&amp;1 and 2</source>
        <translation>COM&amp;1 und 2 durchsuchen</translation>
    </message>
    <message>
        <source>&amp;Receive</source>
        <translation>&amp;Empfangen</translation>
    </message>
    <message>
        <source>De&amp;buger</source>
        <translation>Deb&amp;ugger</translation>
    </message>
    <message>
        <source>Cl&amp;ear</source>
        <translation>Lee&amp;ren</translation>
    </message>
    <message>
        <source>DRA&amp;W</source>
        <translation>&amp;ZEICHNEN</translation>
    </message>
    <message>
        <source>Recor&amp;d …</source>
        <translation>Au&amp;fzeichnen …</translation>
    </message>
    <message>
        <source>Writes everything that passes the port to a file</source>
        <translation>Schreibt alles, was über den Port geht, in eine Datei</translation>
    </message>
    <message>
        <source>Re&amp;play …</source>
        <translation>&amp;Wiedergeben …</translation>
    </message>
    <message>
        <source>Shows a recording as if it came from the controller</source>
        <translation>Zeigt eine Aufzeichnung, als käme sie vom Controller</translation>
    </message>
    <message>
        <source>Qu&amp;it</source>
        <translation>&amp;Verlassen</translation>
    </message>
    <message>
        <source>Gives the port back to the driver and shows the main window</source>
        <translation>Gibt den Port an den Treiber zurück und zeigt das Hauptfenster</translation>
    </message>
    <message>
        <source>E&amp;xit   Debuger</source>
        <translation>Pro&amp;gramm beenden</translation>
    </message>
    <message>
        <source>Gives the port back to the driver and ends the program</source>
        <translation>Gibt den Port an den Treiber zurück und beendet das Programm</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>Konsole</translation>
    </message>
    <message>
        <source>Find and keep</source>
        <translation>Suchen und sichern</translation>
    </message>
    <message>
        <source>Waiting for the controller …</source>
        <translation>Auf den Controller wird gewartet …</translation>
    </message>
    <message>
        <source>Record to</source>
        <translation>Aufzeichnen in</translation>
    </message>
    <message>
        <source>Recordings (*.txt)</source>
        <translation>Aufzeichnungen (*.txt)</translation>
    </message>
    <message>
        <source>Replay a recording</source>
        <translation>Eine Aufzeichnung wiedergeben</translation>
    </message>
    <message>
        <source>Playing back a recording; no port is open.</source>
        <translation>Eine Aufzeichnung wird wiedergegeben; es ist kein Port offen.</translation>
    </message>
    <message>
        <source>Stop recor&amp;ding</source>
        <translation>Au&amp;fzeichnung beenden</translation>
    </message>
    <message>
        <source>Stop re&amp;play</source>
        <translation>&amp;Wiedergabe beenden</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Melderate</translation>
    </message>
    <message>
        <source>The main window is busy. Try again when it is through.</source>
        <translation>Das Hauptfenster ist beschäftigt. Versuchen Sie es noch einmal, wenn es fertig ist.</translation>
    </message>
    <message>
        <source>Script</source>
        <translation>Skript</translation>
    </message>
    <message>
        <source>The script runs …</source>
        <translation>Das Skript läuft …</translation>
    </message>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Leitung</translation>
    </message>
    <message>
        <source>Ports</source>
        <translation>Anschlüsse</translation>
    </message>
    <message>
        <source>Plot</source>
        <translation>Kurven</translation>
    </message>
    <message>
        <source>Searching all ports …</source>
        <translation>Alle Ports werden durchsucht …</translation>
    </message>
    <message>
        <source>Playing back a recording; the port stays open, but is not shown.</source>
        <translation>Eine Aufzeichnung wird wiedergegeben; der Port bleibt offen, ist aber nicht zu sehen.</translation>
    </message>
</context>
<context>
    <name>touch::frmRatePanel</name>
    <message>
        <source>How many intervals from one report to the next are how long; a bar for every %1 ms, the last one also for longer ones</source>
        <translation>Wie viele Abstände von einer Meldung zur nächsten wie lang sind; ein Balken je %1 ms, der letzte auch für längere</translation>
    </message>
    <message>
        <source>from %1 ms: %2</source>
        <translation>ab %1 ms: %2</translation>
    </message>
    <message>
        <source>Intervals between reports</source>
        <translation>Abstände zwischen Meldungen</translation>
    </message>
    <message>
        <source>No stroke has been measured.</source>
        <translation>Es ist kein Strich gemessen.</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>Draw one stroke on the panel.</source>
        <translation>Zeichnen Sie einen Strich auf dem Panel.</translation>
    </message>
    <message>
        <source>Press &quot;Receive&quot;, then draw one stroke.</source>
        <translation>Drücken Sie „Empfangen“, und zeichnen Sie dann einen Strich.</translation>
    </message>
    <message>
        <source>Mean of %1 strokes, while touched: %2 reports per second</source>
        <translation>Mittel aus %1 Strichen, während der Berührung: %2 Meldungen je Sekunde</translation>
    </message>
</context>
<context>
    <name>touch::frmReplayBar</name>
    <message>
        <source>Place in the recording</source>
        <translation>Stelle in der Aufzeichnung</translation>
    </message>
    <message>
        <source>Speed of the replay</source>
        <translation>Tempo der Wiedergabe</translation>
    </message>
    <message>
        <source>%1x</source>
        <translation>%1x</translation>
    </message>
    <message>
        <source>%1 of %2 s</source>
        <translation>%1 von %2 s</translation>
    </message>
    <message>
        <source>Hold</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Holds the replay and lets it go on (Alt+J)</source>
        <translation>Hält die Wiedergabe an und lässt sie weiterlaufen (Alt+J)</translation>
    </message>
    <message>
        <source>Lets the next bytes pass while the replay is held (Alt+9)</source>
        <translation>Lässt bei angehaltener Wiedergabe die nächsten Bytes durch (Alt+9)</translation>
    </message>
    <message>
        <source>Time to go to</source>
        <translation>Zeit, zu der es gehen soll</translation>
    </message>
    <message>
        <source>h:mm:ss</source>
        <translation>h:mm:ss</translation>
    </message>
    <message>
        <source>A time since the beginning, as seconds or h:mm:ss; Enter goes there exactly</source>
        <translation>Eine Zeit seit dem Anfang, in Sekunden oder h:mm:ss; Enter geht genau dorthin</translation>
    </message>
    <message>
        <source>−</source>
        <translation>−</translation>
    </message>
    <message>
        <source>A second back</source>
        <translation>Eine Sekunde zurück</translation>
    </message>
    <message>
        <source>+</source>
        <translation>+</translation>
    </message>
    <message>
        <source>A second on</source>
        <translation>Eine Sekunde weiter</translation>
    </message>
</context>
<context>
    <name>touch::frmRsDraw</name>
    <message>
        <source>Raw drawing</source>
        <translation>Rohdaten zeichnen</translation>
    </message>
    <message>
        <source>What the controller reports</source>
        <translation>Was der Controller meldet</translation>
    </message>
    <message>
        <source>Received bytes</source>
        <translation>Empfangene Bytes</translation>
    </message>
    <message>
        <source>Mo&amp;nitor</source>
        <translation>Mo&amp;nitor</translation>
    </message>
    <message>
        <source>Fo&amp;llow</source>
        <translation>&amp;Folgen</translation>
    </message>
    <message>
        <source>Monitor &amp;only</source>
        <translation>Nu&amp;r Monitor</translation>
    </message>
    <message>
        <source>Pa&amp;use</source>
        <translation>&amp;Anhalten</translation>
    </message>
    <message>
        <source>F&amp;it</source>
        <translation>Ein&amp;passen</translation>
    </message>
    <message>
        <source>&amp;Wipe</source>
        <translation>&amp;Leeren</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>&amp;Tasten</translation>
    </message>
    <message>
        <source>Lea&amp;ve</source>
        <translation>&amp;Verlassen</translation>
    </message>
    <message>
        <source>Reports: %1     Unrecognised bytes: %2</source>
        <translation>Meldungen: %1     Bytes in keiner Meldung: %2</translation>
    </message>
    <message>
        <source>A dot for each report, joined by lines; the bytes stand in the monitor.</source>
        <translation>Ein Punkt für jede Meldung, durch Linien verbunden; die Bytes stehen im Monitor.</translation>
    </message>
    <message>
        <source>&amp;Hide (F2)</source>
        <translation>Aus&amp;blenden (F2)</translation>
    </message>
    <message>
        <source>F2 or the right mouse button shows monitor and bars again</source>
        <translation>F2 oder die rechte Maustaste zeigt Monitor und Leisten wieder</translation>
    </message>
    <message>
        <source>The monitor is full; &quot;Wipe&quot; empties it.</source>
        <translation>Der Monitor ist voll; „Leeren“ macht ihn frei.</translation>
    </message>
    <message>
        <source>&amp;Rolling</source>
        <translation>&amp;Mitlaufend</translation>
    </message>
</context>
<context>
    <name>touch::frmScriptPanel</name>
    <message>
        <source>No script is chosen.</source>
        <translation>Es ist kein Skript gewählt.</translation>
    </message>
    <message>
        <source>&amp;Choose …</source>
        <translation>Wäh&amp;len …</translation>
    </message>
    <message>
        <source>Run &amp;script</source>
        <translation>&amp;Skript starten</translation>
    </message>
    <message>
        <source>P&amp;ause</source>
        <translation>P&amp;ause</translation>
    </message>
    <message>
        <source>Stop runnin&amp;g</source>
        <translation>A&amp;bbrechen</translation>
    </message>
    <message>
        <source>Lines of the script</source>
        <translation>Zeilen des Skripts</translation>
    </message>
    <message>
        <source>Nothing is sent any more; the port gets its usual line settings</source>
        <translation>Es wird nichts mehr gesendet; der Port bekommt seine üblichen Leitungseinstellungen</translation>
    </message>
    <message>
        <source>Choose a script</source>
        <translation>Ein Skript wählen</translation>
    </message>
    <message>
        <source>Scripts (*.tus);;All files (*)</source>
        <translation>Skripte (*.tus);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Resu&amp;me</source>
        <translation>F&amp;ortsetzen</translation>
    </message>
    <message>
        <source>%1: ended in line %2</source>
        <translation>%1: in Zeile %2 beendet</translation>
    </message>
    <message>
        <source>%1: paused in line %2</source>
        <translation>%1: hält in Zeile %2</translation>
    </message>
    <message>
        <source>%1: running, line %2</source>
        <translation>%1: läuft, Zeile %2</translation>
    </message>
</context>
<context>
    <name>touch::frmSettingsPage</name>
    <message>
        <source>Touch mode</source>
        <translation>Berührungsmodus</translation>
    </message>
    <message>
        <source>Touch</source>
        <translation>Touch</translation>
    </message>
    <message>
        <source>Con&amp;firm</source>
        <translation>Über&amp;nehmen</translation>
    </message>
    <message>
        <source>Hide C&amp;ursor</source>
        <translation>Mauszeiger &amp;verbergen</translation>
    </message>
    <message>
        <source>How to hide the cursor</source>
        <translation>So wird der Mauszeiger verborgen</translation>
    </message>
    <message>
        <source>(current value unknown)</source>
        <translation>(derzeitiger Wert unbekannt)</translation>
    </message>
    <message>
        <source>Timing (press Confirm to apply)</source>
        <translation>Zeiten (gelten nach Bestätigen)</translation>
    </message>
    <message>
        <source>not sent</source>
        <translation>nicht gesendet</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>ms</translation>
    </message>
    <message>
        <source>No instructions found (&quot;cursoroff.txt&quot; is missing).</source>
        <translation>Keine Anleitung gefunden („cursoroff.txt“ fehlt).</translation>
    </message>
    <message>
        <source>No instructions found (&quot;cursoroff.txt&quot; is empty).</source>
        <translation>Keine Anleitung gefunden („cursoroff.txt“ ist leer).</translation>
    </message>
    <message>
        <source>Changing the setting …</source>
        <translation>Die Einstellung wird geändert …</translation>
    </message>
</context>
<context>
    <name>touch::frmTestsPage</name>
    <message>
        <source>&amp;Draw</source>
        <translation>&amp;Zeichnen</translation>
    </message>
    <message>
        <source>Draw freely or along guide lines, and see where the ink leaves them.</source>
        <translation>Zeichnen Sie frei oder entlang von Hilfslinien, und sehen Sie, wo die Tinte sie verlässt.</translation>
    </message>
    <message>
        <source>Faults of the simulated panels</source>
        <translation>Fehler der simulierten Panels</translation>
    </message>
    <message>
        <source>&amp;Measure</source>
        <translation>&amp;Messen</translation>
    </message>
    <message>
        <source>Draw lines along guides and prove in millimetres how good the panel is. Calibrate it first.</source>
        <translation>Linien entlang von Führungslinien zeichnen und in Millimetern nachweisen, wie gut das Panel ist. Kalibrieren Sie es vorher.</translation>
    </message>
</context>
<context>
    <name>touch::frmTouchPad</name>
    <message>
        <source>Simulated panel:
draw here with the mouse</source>
        <translation>Simuliertes Panel:
Zeichnen Sie hier mit der Maus</translation>
    </message>
</context>
<context>
    <name>touch::frmWindows</name>
    <message>
        <source>Calibration saved.</source>
        <translation>Die Kalibrierung ist gespeichert.</translation>
    </message>
    <message>
        <source>No touch came in time. The calibration was given up; nothing was stored.</source>
        <translation>Es kam nicht rechtzeitig eine Berührung. Die Kalibrierung wurde aufgegeben; nichts wurde gespeichert.</translation>
    </message>
    <message>
        <source>The calibration failed; nothing was stored.</source>
        <translation>Die Kalibrierung ist fehlgeschlagen; nichts wurde gespeichert.</translation>
    </message>
    <message>
        <source>The calibration was cancelled; nothing was stored.</source>
        <translation>Die Kalibrierung wurde abgebrochen; nichts wurde gespeichert.</translation>
    </message>
    <message>
        <source>Assigning the monitor …</source>
        <translation>Der Monitor wird zugewiesen …</translation>
    </message>
    <message>
        <source>The panel belongs to monitor %1.</source>
        <translation>Das Panel gehört zu Monitor %1.</translation>
    </message>
    <message>
        <source>The driver did not take monitor %1.</source>
        <translation>Der Treiber hat Monitor %1 nicht angenommen.</translation>
    </message>
</context>
<context>
    <name>touch::measure::frmGuideBox</name>
    <message>
        <source>How it is done</source>
        <translation>So geht es</translation>
    </message>
</context>
<context>
    <name>touch::measure::frmLimitsBox</name>
    <message>
        <source>Limits</source>
        <translation>Grenzwerte</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>From a file …</source>
        <translation>Aus einer Datei …</translation>
    </message>
    <message>
        <source>Open limits</source>
        <translation>Grenzwerte öffnen</translation>
    </message>
    <message>
        <source>those of the measurement</source>
        <translation>die der Messung</translation>
    </message>
</context>
<context>
    <name>touch::measure::frmLines</name>
    <message>
        <source>Lines to follow</source>
        <translation>Nachzuziehende Linien</translation>
    </message>
    <message>
        <source>The line to draw along is white; its name stands in the panel beside it.</source>
        <translation>Die nachzuziehende Linie ist weiß; ihr Name steht im Feld daneben.</translation>
    </message>
    <message>
        <source>◀ &amp;Back</source>
        <translation>◀ &amp;Zurück</translation>
    </message>
    <message>
        <source>The line before (Left)</source>
        <translation>Zur vorigen Linie (Links)</translation>
    </message>
    <message>
        <source>&amp;Next ▶</source>
        <translation>W&amp;eiter ▶</translation>
    </message>
    <message>
        <source>Keeps what is drawn and goes on (Right, Enter)</source>
        <translation>Behält das Gezeichnete und geht weiter (Rechts, Eingabe)</translation>
    </message>
    <message>
        <source>&amp;Repeat</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Draws this line anew (Backspace)</source>
        <translation>Diese Linie neu zeichnen (Rücktaste)</translation>
    </message>
    <message>
        <source>Re&amp;sults</source>
        <translation>E&amp;rgebnisse</translation>
    </message>
    <message>
        <source>What has been measured so far</source>
        <translation>Was bisher gemessen ist</translation>
    </message>
    <message>
        <source>&amp;Leave</source>
        <translation>&amp;Verlassen</translation>
    </message>
    <message>
        <source>Back to the main window (Esc)</source>
        <translation>Zurück zum Hauptfenster (Esc)</translation>
    </message>
    <message>
        <source>Draw the lines of such files again. Each file is then kept beside the new one, with &quot;.old&quot; behind its name.</source>
        <translation>Zeichnen Sie die Linien solcher Dateien noch einmal. Jede Datei bleibt dann neben der neuen erhalten, mit „.old“ hinter ihrem Namen.</translation>
    </message>
    <message>
        <source>%1 of %2 lines have been measured.</source>
        <translation>%1 von %2 Linien sind gemessen.</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Start over</source>
        <translation>Neu beginnen</translation>
    </message>
    <message>
        <source>Stroke too short. Draw the whole line again, from edge to edge.</source>
        <translation>Das ergab keine Messung. Zeichnen Sie die ganze Linie noch einmal, von Rand zu Rand.</translation>
    </message>
    <message>
        <source>The stroke left its line by up to %1. Who did that?</source>
        <translation>Der Strich wich bis zu %1 von seiner Linie ab. Wer war das?</translation>
    </message>
    <message>
        <source>The panel did that</source>
        <translation>Das Panel</translation>
    </message>
    <message>
        <source>My hand</source>
        <translation>Meine Hand</translation>
    </message>
    <message>
        <source>Draw along the white line, from edge to edge.</source>
        <translation>Zeichnen Sie entlang der weißen Linie, von Rand zu Rand.</translation>
    </message>
    <message>
        <source>%1 %2: at most %3 off, straight to %4.</source>
        <translation>%1 %2: höchstens %3 daneben, gerade auf %4.</translation>
    </message>
    <message>
        <source>Drawn:</source>
        <translation>Gezeichnet:</translation>
    </message>
    <message>
        <source>Measured before:</source>
        <translation>Zuvor gemessen:</translation>
    </message>
    <message>
        <source>%1   %2 of %3 measured</source>
        <translation>%1   %2 von %3 gemessen</translation>
    </message>
    <message>
        <source>A ruler lies beside the line, held on the panel&apos;s frame.</source>
        <translation>Ein Lineal liegt neben der Linie, gehalten auf dem Rahmen des Panels.</translation>
    </message>
    <message>
        <source>&quot;Next&quot; goes on, &quot;Repeat&quot; draws it again.</source>
        <translation>„Weiter“ geht weiter, „Wiederholen“ zeichnet noch einmal.</translation>
    </message>
</context>
<context>
    <name>touch::measure::frmLinesPage</name>
    <message>
        <source>Deviation along each line, and map of the panel</source>
        <translation>Abweichung entlang jeder Linie und Karte des Panels</translation>
    </message>
    <message>
        <source>All of its figures stand on the page &quot;Line by line&quot;.</source>
        <translation>Alle Zahlen dazu stehen auf der Seite „Linie für Linie“.</translation>
    </message>
</context>
<context>
    <name>touch::measure::frmMeasure</name>
    <message>
        <source>Open a measurement</source>
        <translation>Messung öffnen</translation>
    </message>
    <message>
        <source>Measure anew</source>
        <translation>Neu messen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Choose at least one test.</source>
        <translation>Wählen Sie mindestens einen Test.</translation>
    </message>
    <message>
        <source>Leave without saving the measurement? Single lines are kept as files, everything else is lost.</source>
        <translation>Ohne Speichern der Messung verlassen? Einzelne Linien bleiben als Dateien erhalten, alles andere geht verloren.</translation>
    </message>
    <message>
        <source>Leave</source>
        <translation>Verlassen</translation>
    </message>
    <message>
        <source>Stay</source>
        <translation>Bleiben</translation>
    </message>
    <message>
        <source>Measure everything anew? Single lines are kept as files, with &quot;.old&quot; behind their names; everything else is lost.</source>
        <translation>Alles neu messen? Einzelne Linien bleiben als Dateien erhalten, mit „.old“ hinter ihren Namen; alles andere geht verloren.</translation>
    </message>
    <message>
        <source>%1

From now on the pointer is measured.</source>
        <translation>%1

Ab jetzt wird der Zeiger gemessen.</translation>
    </message>
</context>
<context>
    <name>touch::measure::frmMeasureResult</name>
    <message>
        <source>Panel width</source>
        <translation>Panelbreite</translation>
    </message>
    <message>
        <source>Panel height</source>
        <translation>Panelhöhe</translation>
    </message>
    <message>
        <source>&amp;Draw again</source>
        <translation>&amp;Erneut zeichnen</translation>
    </message>
    <message>
        <source>&amp;Measure anew</source>
        <translation>&amp;Neu messen</translation>
    </message>
    <message>
        <source>Size and limits</source>
        <translation>Größe und Grenzen</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>Figures of each line in millimetres</source>
        <translation>Zahlen jeder Linie in Millimetern</translation>
    </message>
    <message>
        <source>&amp;Width:</source>
        <translation>&amp;Breite:</translation>
    </message>
    <message>
        <source>&amp;Height:</source>
        <translation>&amp;Höhe:</translation>
    </message>
    <message>
        <source>&amp;Judge again</source>
        <translation>Neu be&amp;urteilen</translation>
    </message>
    <message>
        <source>Judges everything with this size</source>
        <translation>Beurteilt alles mit dieser Größe</translation>
    </message>
    <message>
        <source>L&amp;imits:</source>
        <translation>&amp;Grenzen:</translation>
    </message>
    <message>
        <source>◀ &amp;Back</source>
        <translation>◀ &amp;Zurück</translation>
    </message>
    <message>
        <source>&amp;Leave</source>
        <translation>&amp;Verlassen</translation>
    </message>
    <message>
        <source>&amp;Save …</source>
        <translation>&amp;Speichern …</translation>
    </message>
    <message>
        <source>&amp;PNG …</source>
        <translation>&amp;PNG …</translation>
    </message>
    <message>
        <source>PD&amp;F …</source>
        <translation>PD&amp;F …</translation>
    </message>
    <message>
        <source>&amp;CSV …</source>
        <translation>&amp;CSV …</translation>
    </message>
    <message>
        <source>Active area: %1</source>
        <translation>Aktive Fläche: %1</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Verdict</source>
        <translation>Urteil</translation>
    </message>
    <message>
        <source>Save as %1</source>
        <translation>Als %1 speichern</translation>
    </message>
    <message>
        <source>Saved in %1</source>
        <translation>Gespeichert in %1</translation>
    </message>
    <message>
        <source>Lines</source>
        <translation>Linien</translation>
    </message>
    <message>
        <source>Line by line</source>
        <translation>Linie für Linie</translation>
    </message>
    <message>
        <source>Draws the line that is marked under &quot;Line by line&quot; again</source>
        <translation>Zeichnet die unter „Linie für Linie“ markierte Linie noch einmal</translation>
    </message>
    <message>
        <source>Begins with the first test; single lines are kept as files</source>
        <translation>Beginnt mit dem ersten Test; einzelne Linien bleiben als Dateien erhalten</translation>
    </message>
</context>
<context>
    <name>touch::measure::frmMeasureStart</name>
    <message>
        <source>Panel width</source>
        <translation>Panelbreite</translation>
    </message>
    <message>
        <source>Panel height</source>
        <translation>Panelhöhe</translation>
    </message>
    <message>
        <source>Panel</source>
        <translation>Panel</translation>
    </message>
    <message>
        <source>&amp;Width:</source>
        <translation>&amp;Breite:</translation>
    </message>
    <message>
        <source>&amp;Height:</source>
        <translation>&amp;Höhe:</translation>
    </message>
    <message>
        <source>L&amp;imits:</source>
        <translation>&amp;Grenzen:</translation>
    </message>
    <message>
        <source>&amp;Panel:</source>
        <translation>&amp;Panel:</translation>
    </message>
    <message>
        <source>Serial n&amp;umber:</source>
        <translation>Serien&amp;nummer:</translation>
    </message>
    <message>
        <source>&amp;Operator:</source>
        <translation>P&amp;rüfer:</translation>
    </message>
    <message>
        <source>Tests</source>
        <translation>Tests</translation>
    </message>
    <message>
        <source>&amp;Lines</source>
        <translation>&amp;Linien</translation>
    </message>
    <message>
        <source>Draw along guides: straightness of the panel, offset and tilt of its calibration.</source>
        <translation>Entlang von Führungslinien zeichnen: Geradheit des Panels, Versatz und Neigung der Kalibrierung.</translation>
    </message>
    <message>
        <source>Which lines</source>
        <translation>Welche Linien</translation>
    </message>
    <message>
        <source>10 lines</source>
        <translation>10 Linien</translation>
    </message>
    <message>
        <source>18 lines</source>
        <translation>18 Linien</translation>
    </message>
    <message>
        <source>18 lines, diagonals and ways back</source>
        <translation>18 Linien, Diagonalen und Rückwege</translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <translation>&amp;Start</translation>
    </message>
    <message>
        <source>Op&amp;en …</source>
        <translation>Ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>Lea&amp;ve</source>
        <translation>&amp;Verlassen</translation>
    </message>
    <message>
        <source>Active area, from the screen.</source>
        <translation>Aktive Fläche, vom Bildschirm.</translation>
    </message>
    <message>
        <source>Active area, as entered.</source>
        <translation>Aktive Fläche, wie eingegeben.</translation>
    </message>
    <message>
        <source>Nominal: the screen does not say how large it is. Measure the picture without its frame, and enter width and height.</source>
        <translation>Nominell: Der Bildschirm sagt nicht, wie groß er ist. Messen Sie das Bild ohne Rahmen und geben Sie Breite und Höhe ein.</translation>
    </message>
    <message>
        <source>&amp;Taps</source>
        <translation>&amp;Tippen</translation>
    </message>
    <message>
        <source>Tap targets three times each: accuracy and repeatability.</source>
        <translation>Ziele je dreimal antippen: Genauigkeit und Wiederholbarkeit.</translation>
    </message>
    <message>
        <source>How many targets</source>
        <translation>Wie viele Ziele</translation>
    </message>
    <message>
        <source>9 targets</source>
        <translation>9 Ziele</translation>
    </message>
    <message>
        <source>25 targets</source>
        <translation>25 Ziele</translation>
    </message>
    <message>
        <source>&amp;Resting finger</source>
        <translation>Ruhender F&amp;inger</translation>
    </message>
    <message>
        <source>Hold a finger still at five places, three seconds each: noise and drift.</source>
        <translation>Den Finger an fünf Stellen je drei Sekunden stillhalten: Rauschen und Drift.</translation>
    </message>
    <message>
        <source>&amp;Coverage</source>
        <translation>&amp;Abdeckung</translation>
    </message>
    <message>
        <source>Rub the whole panel: dead spots, and how far the edges are reached.</source>
        <translation>Das ganze Panel reiben: tote Stellen und wie weit die Ränder erreicht werden.</translation>
    </message>
    <message>
        <source>The controller&apos;s own reports are finer than the pointer, and have times of their own. While they are read the pointer does not follow the finger.</source>
        <translation>Die Meldungen des Controllers selbst sind feiner als der Zeiger und haben eigene Zeiten. Solange sie gelesen werden, folgt der Zeiger dem Finger nicht.</translation>
    </message>
    <message>
        <source>The pointer</source>
        <translation>Vom Zeiger</translation>
    </message>
    <message>
        <source>Reports on %1</source>
        <translation>Meldungen an %1</translation>
    </message>
    <message>
        <source>Touches &amp;from:</source>
        <translation>B&amp;erührungen:</translation>
    </message>
</context>
<context>
    <name>touch::measure::frmTouchTest</name>
    <message>
        <source>Places to touch</source>
        <translation>Stellen zum Berühren</translation>
    </message>
    <message>
        <source>The place to touch, or the line to draw, is white. The box beside it says what to do.</source>
        <translation>Die Stelle zum Berühren oder die Linie zum Zeichnen ist weiß. Der Kasten daneben sagt, was zu tun ist.</translation>
    </message>
    <message>
        <source>◀ &amp;Back</source>
        <translation>◀ &amp;Zurück</translation>
    </message>
    <message>
        <source>The place before (Left)</source>
        <translation>Die Stelle davor (Links)</translation>
    </message>
    <message>
        <source>&amp;Next ▶</source>
        <translation>W&amp;eiter ▶</translation>
    </message>
    <message>
        <source>The next place (Right, Enter)</source>
        <translation>Die nächste Stelle (Rechts, Eingabe)</translation>
    </message>
    <message>
        <source>&amp;Repeat</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Does the last place anew (Backspace)</source>
        <translation>Wiederholt die letzte Stelle (Rücktaste)</translation>
    </message>
    <message>
        <source>Nothing &amp;came</source>
        <translation>Nichts &amp;kam an</translation>
    </message>
    <message>
        <source>You have tapped, and the panel did not feel it (0)</source>
        <translation>Sie haben getippt, und das Panel hat es nicht gespürt (0)</translation>
    </message>
    <message>
        <source>The &amp;panel</source>
        <translation>Das &amp;Panel</translation>
    </message>
    <message>
        <source>The line fails (1)</source>
        <translation>Die Linie besteht nicht (1)</translation>
    </message>
    <message>
        <source>My &amp;hand</source>
        <translation>Meine &amp;Hand</translation>
    </message>
    <message>
        <source>Draw it again (2)</source>
        <translation>Zeichnen Sie sie erneut (2)</translation>
    </message>
    <message>
        <source>&amp;Leave</source>
        <translation>&amp;Verlassen</translation>
    </message>
    <message>
        <source>Ends this test (Esc)</source>
        <translation>Beendet diesen Test (Esc)</translation>
    </message>
    <message>
        <source>&amp;Done</source>
        <translation>&amp;Fertig</translation>
    </message>
    <message>
        <source>Lift the finger.</source>
        <translation>Heben Sie den Finger.</translation>
    </message>
    <message>
        <source>Too short. Rest the finger until the ring is full.</source>
        <translation>Zu kurz. Lassen Sie den Finger ruhen, bis der Ring voll ist.</translation>
    </message>
    <message>
        <source>One tap was reported twice.</source>
        <translation>Ein Tippen wurde zweimal gemeldet.</translation>
    </message>
    <message>
        <source>Draw the line again.</source>
        <translation>Zeichnen Sie die Linie erneut.</translation>
    </message>
    <message>
        <source>Resting finger: place %1 of %2</source>
        <translation>Ruhender Finger: Stelle %1 von %2</translation>
    </message>
    <message>
        <source>Taps: target %1 of %2</source>
        <translation>Tippen: Ziel %1 von %2</translation>
    </message>
    <message>
        <source>Coverage: %1 %</source>
        <translation>Abdeckung: %1 %</translation>
    </message>
    <message>
        <source>Line %1 (%2 of %3)</source>
        <translation>Linie %1 (%2 von %3)</translation>
    </message>
    <message>
        <source>Rest a finger in the ring until it is full.</source>
        <translation>Lassen Sie einen Finger im Ring ruhen, bis er voll ist.</translation>
    </message>
    <message>
        <source>Tap the middle of the cross three times. Tap %1 of 3 comes next.</source>
        <translation>Tippen Sie dreimal in die Mitte des Kreuzes. Als Nächstes kommt das %1. von 3 Malen.</translation>
    </message>
    <message>
        <source>Every cell was touched.</source>
        <translation>Jede Zelle wurde berührt.</translation>
    </message>
    <message>
        <source>Rub the whole panel, up to its edges. Small dots were not touched yet.</source>
        <translation>Reiben Sie das ganze Panel, bis an die Ränder. Kleine Punkte wurden noch nicht berührt.</translation>
    </message>
    <message>
        <source>This stroke went far off its line. Who did that?</source>
        <translation>Dieser Strich ging weit neben seine Linie. Wer war das?</translation>
    </message>
    <message>
        <source>Draw along the line from the circle on, to the other end.</source>
        <translation>Zeichnen Sie die Linie nach, vom Kreis bis zum anderen Ende.</translation>
    </message>
    <message>
        <source>Drawn: %1 % covered, straightness %2.</source>
        <translation>Gezeichnet: %1 % abgedeckt, Geradheit %2.</translation>
    </message>
    <message>
        <source>Rub around the edges first, then back and forth over all.</source>
        <translation>Erst an den Rändern entlang reiben, dann hin und her über alles.</translation>
    </message>
</context>
<context>
    <name>touch::measure::frmVerdict</name>
    <message>
        <source>Map of errors</source>
        <translation>Fehlerkarte</translation>
    </message>
    <message>
        <source>How far touches miss in each place of the panel.</source>
        <translation>Wie weit Berührungen an jeder Stelle des Panels danebenliegen.</translation>
    </message>
    <message>
        <source>There is no map yet: it needs at least two lines in each direction, or taps.</source>
        <translation>Es gibt noch keine Karte: Sie braucht mindestens zwei Linien in jeder Richtung oder Tippen.</translation>
    </message>
    <message>
        <source>Figures</source>
        <translation>Zahlen</translation>
    </message>
    <message>
        <source>Map</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>Causes and advice</source>
        <translation>Ursachen und Rat</translation>
    </message>
    <message>
        <source>Figures beside their limits</source>
        <translation>Zahlen neben ihren Grenzen</translation>
    </message>
    <message>
        <source>Figure</source>
        <translation>Zahl</translation>
    </message>
    <message>
        <source>Measured</source>
        <translation>Gemessen</translation>
    </message>
    <message>
        <source>Limit</source>
        <translation>Grenze</translation>
    </message>
    <message>
        <source>% of side</source>
        <translation>% der Seite</translation>
    </message>
    <message>
        <source>Verdict</source>
        <translation>Urteil</translation>
    </message>
    <message>
        <source>Analysing …</source>
        <translation>Wird ausgewertet …</translation>
    </message>
    <message>
        <source>Nothing is wrong as far as this measurement can tell.</source>
        <translation>Soweit diese Messung es sagen kann, ist alles in Ordnung.</translation>
    </message>
    <message>
        <source>Calibration</source>
        <translation>Kalibrierung</translation>
    </message>
</context>
</TS>
