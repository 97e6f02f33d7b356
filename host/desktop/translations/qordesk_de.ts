<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>BackUps</name>
    <message>
        <source>Which store is it a backup of?</source>
        <translation>Von welchem Bestand ist das die Sicherung?</translation>
    </message>
    <message>
        <source>Stores (*.db)</source>
        <translation>Bestände (*.db)</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 vom %2</translation>
    </message>
    <message>
        <source>Put the backup %1 into the store on the server? A server takes one into a new store only: what is in use there stays as it is.</source>
        <translation>Die Sicherung %1 in den Bestand auf dem Server legen? Ein Server nimmt eine nur in einen neuen Bestand auf: Was dort in Gebrauch ist, bleibt, wie es ist.</translation>
    </message>
    <message>
        <source>Put the backup %1 in the place of %2? What was done since then is not in it. The store as it is now is kept beside it under another name; whoever has it open must open it again.</source>
        <translation>Die Sicherung %1 an die Stelle von %2 setzen? Was seitdem getan wurde, steht nicht darin. Der Bestand, wie er jetzt ist, bleibt daneben unter einem anderen Namen; wer ihn geöffnet hat, muss ihn neu öffnen.</translation>
    </message>
    <message>
        <source>Restored from %1.</source>
        <translation>Wiederhergestellt aus %1.</translation>
    </message>
    <message>
        <source>%1 The store as it was is %2.</source>
        <translation>%1 Der Bestand, wie er war, ist %2.</translation>
    </message>
    <message>
        <source>There is nothing to back up.</source>
        <translation>Es gibt nichts zu sichern.</translation>
    </message>
    <message>
        <source>The demo building is in memory alone: nothing of it is kept.</source>
        <translation>Das Demogebäude ist nur im Arbeitsspeicher: Nichts davon bleibt.</translation>
    </message>
    <message>
        <source>Back up the store</source>
        <translation>Bestand sichern</translation>
    </message>
    <message>
        <source>Backing up</source>
        <translation>Bestand wird gesichert</translation>
    </message>
    <message>
        <source>Backed up to %1 (%2), and read back.</source>
        <translation>Gesichert in %1 (%2) und zurückgelesen.</translation>
    </message>
    <message>
        <source>Cancelled. The store is not backed up.</source>
        <translation>Abgebrochen. Der Bestand ist nicht gesichert.</translation>
    </message>
    <message>
        <source>The store is not backed up.</source>
        <translation>Der Bestand ist nicht gesichert.</translation>
    </message>
    <message>
        <source>Restore which backup?</source>
        <translation>Welche Sicherung wiederherstellen?</translation>
    </message>
    <message>
        <source>Restoring the backup</source>
        <translation>Die Sicherung wird wiederhergestellt</translation>
    </message>
    <message>
        <source>Cancelled. The store is as it was.</source>
        <translation>Abgebrochen. Der Bestand ist, wie er war.</translation>
    </message>
    <message>
        <source>The backup is not restored.</source>
        <translation>Die Sicherung ist nicht wiederhergestellt.</translation>
    </message>
</context>
<context>
    <name>BuildingPage</name>
    <message>
        <source>Doors and schedules</source>
        <translation>Türen und Zeitpläne</translation>
    </message>
    <message>
        <source>&amp;Doors:</source>
        <translation>&amp;Türen:</translation>
    </message>
    <message>
        <source>Doors</source>
        <translation>Türen</translation>
    </message>
    <message>
        <source>Door</source>
        <translation>Tür</translation>
    </message>
    <message>
        <source>Na&amp;me:</source>
        <translation>Na&amp;me:</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>Um&amp;benennen</translation>
    </message>
    <message>
        <source>S&amp;chedules:</source>
        <translation>&amp;Zeitpläne:</translation>
    </message>
    <message>
        <source>Schedules</source>
        <translation>Zeitpläne</translation>
    </message>
    <message>
        <source>New schedule</source>
        <translation>Neuer Zeitplan</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>N&amp;umber:</source>
        <translation>Numme&amp;r:</translation>
    </message>
    <message>
        <source>the next one</source>
        <translation>die nächste</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Ne&amp;w</source>
        <translation>Ne&amp;u</translation>
    </message>
    <message>
        <source>De&amp;lete…</source>
        <translation>&amp;Löschen…</translation>
    </message>
    <message>
        <source>&amp;Find a door:</source>
        <translation>Tür suc&amp;hen:</translation>
    </message>
    <message>
        <source>Text in any column</source>
        <translation>Text in einer Spalte</translation>
    </message>
    <message>
        <source>Find a sc&amp;hedule:</source>
        <translation>Z&amp;eitplan suchen:</translation>
    </message>
</context>
<context>
    <name>CallLog</name>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Object</source>
        <translation>Objekt</translation>
    </message>
    <message>
        <source>Member</source>
        <translation>Member</translation>
    </message>
    <message>
        <source>Arguments</source>
        <translation>Argumente</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
</context>
<context>
    <name>CallLogPanel</name>
    <message>
        <source>Show only calls with this text</source>
        <translation>Nur Aufrufe mit diesem Text anzeigen</translation>
    </message>
    <message>
        <source>Statements only</source>
        <translation>Nur Anweisungen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>The list stands still; calls go on being kept</source>
        <translation>Die Liste steht still; Aufrufe werden weiter festgehalten</translation>
    </message>
    <message>
        <source>Start over</source>
        <translation>Neu beginnen</translation>
    </message>
    <message>
        <source>Empties the list, and opens the screen again so that its calls are complete</source>
        <translation>Leert die Liste und öffnet den Bildschirm neu, damit seine Aufrufe vollständig sind</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Save trace…</source>
        <translation>Mitschnitt speichern…</translation>
    </message>
    <message>
        <source>Calls</source>
        <translation>Aufrufe</translation>
    </message>
    <message>
        <source>The chosen call in full</source>
        <translation>Der gewählte Aufruf im Ganzen</translation>
    </message>
</context>
<context>
    <name>Checking</name>
    <message>
        <source>Checking the store</source>
        <translation>Der Bestand wird geprüft</translation>
    </message>
    <message>
        <source>Cancelled. The store was not looked over to its end.</source>
        <translation>Abgebrochen. Der Bestand wurde nicht bis zum Ende geprüft.</translation>
    </message>
    <message>
        <source>The store cannot be checked.</source>
        <translation>Der Bestand kann nicht geprüft werden.</translation>
    </message>
    <message>
        <source>Nothing is wrong: the store, its rows and the history are in order.</source>
        <translation>Alles ist in Ordnung: der Bestand, seine Zeilen und der Verlauf.</translation>
    </message>
</context>
<context>
    <name>CredentialPage</name>
    <message>
        <source>&amp;Find:</source>
        <translation>&amp;Suchen:</translation>
    </message>
    <message>
        <source>C&amp;redentials:</source>
        <translation>&amp;Ausweise:</translation>
    </message>
    <message>
        <source>Credentials</source>
        <translation>Ausweise</translation>
    </message>
    <message>
        <source>New credentials</source>
        <translation>Neue Ausweise</translation>
    </message>
    <message>
        <source>Numbers</source>
        <translation>Nummern</translation>
    </message>
    <message>
        <source>&amp;Type:</source>
        <translation>&amp;Typ:</translation>
    </message>
    <message>
        <source>How many:</source>
        <translation>Wie viele:</translation>
    </message>
    <message>
        <source>&amp;One</source>
        <translation>&amp;Einer</translation>
    </message>
    <message>
        <source>A ran&amp;ge</source>
        <translation>&amp;Bereich</translation>
    </message>
    <message>
        <source>N&amp;umber:</source>
        <translation>&amp;Nummer:</translation>
    </message>
    <message>
        <source>&amp;Last number:</source>
        <translation>&amp;Letzte Nummer:</translation>
    </message>
    <message>
        <source>Card or transmitter</source>
        <translation>Karte oder Sender</translation>
    </message>
    <message>
        <source>F&amp;acility code:</source>
        <translation>Ob&amp;jektcode:</translation>
    </message>
    <message>
        <source>&amp;ID code:</source>
        <translation>&amp;ID-Code:</translation>
    </message>
    <message>
        <source>Se&amp;quence code:</source>
        <translation>Se&amp;quenzcode:</translation>
    </message>
    <message>
        <source>Button &amp;1</source>
        <translation>Taste &amp;1</translation>
    </message>
    <message>
        <source>Button &amp;4</source>
        <translation>Taste &amp;4</translation>
    </message>
    <message>
        <source>Holder and door</source>
        <translation>Inhaber und Tür</translation>
    </message>
    <message>
        <source>&amp;Held by:</source>
        <translation>In&amp;haber:</translation>
    </message>
    <message>
        <source>Opens &amp;door:</source>
        <translation>Öffnet Tü&amp;r:</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>S&amp;peichern</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>Ne&amp;u</translation>
    </message>
    <message>
        <source>Renum&amp;ber…</source>
        <translation>U&amp;mnummerieren…</translation>
    </message>
    <message>
        <source>D&amp;elete</source>
        <translation>Lös&amp;chen</translation>
    </message>
    <message>
        <source>A part of a credential</source>
        <translation>Teil eines Ausweises</translation>
    </message>
</context>
<context>
    <name>Desks</name>
    <message>
        <source>delete %1 schedules</source>
        <translation>%1 Zeitpläne gelöscht</translation>
    </message>
    <message>
        <source>%1; and %2 more</source>
        <translation>%1; und %2 weitere</translation>
    </message>
    <message>
        <source>%1 directory code: %2</source>
        <translation>%1 Rufcode: %2</translation>
    </message>
    <message>
        <source>%1 directory codes: %2</source>
        <translation>%1 Rufcodes: %2</translation>
    </message>
    <message>
        <source>%1 tenant: %2</source>
        <translation>%1 Mieter: %2</translation>
    </message>
    <message>
        <source>%1 tenants: %2</source>
        <translation>%1 Mietern: %2</translation>
    </message>
    <message>
        <source>%1, and by %2</source>
        <translation>%1 und bei %2</translation>
    </message>
    <message>
        <source>compare with a backup; what the rows hold is not touched by it</source>
        <translation>mit einer Sicherung vergleichen; was in den Zeilen steht, ist davon nicht berührt</translation>
    </message>
    <message>
        <source>no screen and no other command deletes it: &apos;sql --write &quot;DELETE FROM TenantsBackup WHERE RID=%1&quot;&apos;</source>
        <translation>kein Bildschirm und kein anderer Befehl löscht sie: &apos;sql --write &quot;DELETE FROM TenantsBackup WHERE RID=%1&quot;&apos;</translation>
    </message>
    <message>
        <source>give it another one: &apos;units edit %1 %2&apos;</source>
        <translation>einen anderen Wert geben: &apos;units edit %1 %2&apos;</translation>
    </message>
    <message>
        <source>delete what is not needed: nothing can be added before</source>
        <translation>löschen, was nicht gebraucht wird: vorher kann nichts dazukommen</translation>
    </message>
    <message>
        <source>give it a type that has one: &apos;units edit %1 --type TYPE&apos;</source>
        <translation>ihr einen Typ geben, der eine hat: &apos;units edit %1 --type TYPE&apos;</translation>
    </message>
    <message>
        <source>change its first or its last day</source>
        <translation>den ersten oder den letzten Tag ändern</translation>
    </message>
    <message>
        <source>assign it to the right one</source>
        <translation>dem Richtigen zuordnen</translation>
    </message>
    <message>
        <source>give the tenant another credential, or none</source>
        <translation>dem Mieter einen anderen Ausweis geben oder keinen</translation>
    </message>
    <message>
        <source>give the tenant another schedule at that door</source>
        <translation>dem Mieter an dieser Tür einen anderen Zeitplan geben</translation>
    </message>
    <message>
        <source>put the tenant into one of the unit&apos;s groups</source>
        <translation>den Mieter in eine Gruppe der Anlage tun</translation>
    </message>
    <message>
        <source>put the tenant into one of the unit&apos;s groups, or into 0, which is none</source>
        <translation>den Mieter in eine Gruppe der Anlage tun oder in 0, das ist keine</translation>
    </message>
    <message>
        <source>mark it as sent, for it would tell the unit of another one&apos;s row: &apos;steps done %1 --unit %2&apos;</source>
        <translation>ihn als gesendet vermerken, denn er sagte der Anlage etwas von der Zeile einer anderen: &apos;steps done %1 --unit %2&apos;</translation>
    </message>
    <message>
        <source>give the tenant another directory code, or none</source>
        <translation>dem Mieter einen anderen Rufcode geben oder keinen</translation>
    </message>
    <message>
        <source>give the code another schedule for %1, or switch that off</source>
        <translation>dem Code einen anderen Zeitplan für „%1“ geben oder das ausschalten</translation>
    </message>
    <message>
        <source>give it one of the unit&apos;s doors, from 1, or 0 for none; neither a screen nor another command can load the card before: &apos;sql --write &quot;UPDATE CredentialBank SET DOORCODE=0 WHERE RID=%1&quot;&apos;</source>
        <translation>ihr eine der Türen der Anlage geben, ab 1, oder 0 für keine; weder ein Bildschirm noch ein anderer Befehl kann die Karte vorher laden: &apos;sql --write &quot;UPDATE CredentialBank SET DOORCODE=0 WHERE RID=%1&quot;&apos;</translation>
    </message>
    <message>
        <source>give them a type that the screens know (&apos;sql --write&apos;), or leave them</source>
        <translation>ihnen einen Typ geben, den die Bildschirme kennen (&apos;sql --write&apos;), oder sie lassen</translation>
    </message>
    <message>
        <source>give one of them another number, or delete it</source>
        <translation>einem davon eine andere Nummer geben oder ihn löschen</translation>
    </message>
    <message>
        <source>the rows of entry %1 cannot be read</source>
        <translation>die Zeilen des Eintrags %1 sind nicht lesbar</translation>
    </message>
    <message>
        <source>entry %1 is missing</source>
        <translation>Eintrag %1 fehlt</translation>
    </message>
    <message>
        <source>entry %1 is not as it was written, or one that it follows is not</source>
        <translation>Eintrag %1 ist nicht, wie er geschrieben wurde, oder einer, dem er folgt</translation>
    </message>
    <message>
        <source>the history: %1</source>
        <translation>der Verlauf: %1</translation>
    </message>
    <message>
        <source>the row %1 of TenantsBackup is of the tenant RID %2, who is unit %3&apos;s</source>
        <translation>die Zeile %1 von TenantsBackup ist vom Mieter RID %2, der zur Anlage %3 gehört</translation>
    </message>
    <message>
        <source>the programming step %1 is about the directory code RID %2, which is unit %3&apos;s</source>
        <translation>der Programmierschritt %1 betrifft den Rufcode RID %2, der zur Anlage %3 gehört</translation>
    </message>
    <message>
        <source>the programming step %1 is about the tenant RID %2, which is unit %3&apos;s</source>
        <translation>der Programmierschritt %1 betrifft den Mieter RID %2, der zur Anlage %3 gehört</translation>
    </message>
    <message>
        <source>tenant %1 holds the credential RID %2, which is unit %3&apos;s</source>
        <translation>Mieter %1 hat den Ausweis RID %2, der zur Anlage %3 gehört</translation>
    </message>
    <message>
        <source>tenant %1 is in the group %2, which is unit %3&apos;s</source>
        <translation>Mieter %1 ist in der Gruppe %2, die zur Anlage %3 gehört</translation>
    </message>
    <message>
        <source>tenant %1 has the directory code RID %2, which is unit %3&apos;s</source>
        <translation>Mieter %1 hat den Rufcode RID %2, der zur Anlage %3 gehört</translation>
    </message>
    <message>
        <source>credentials of the type %1, which no screen knows: %2, the first RID %3</source>
        <translation>Ausweise des Typs %1, den kein Bildschirm kennt: %2, der erste RID %3</translation>
    </message>
    <message>
        <source>the identity %1 of %2 stands in several units: %3</source>
        <translation>die Kennung %1 in %2 steht in mehreren Anlagen: %3</translation>
    </message>
    <message>
        <source>restore the last backup</source>
        <translation>die letzte Sicherung einspielen</translation>
    </message>
    <message>
        <source>the store is damaged: %1</source>
        <translation>der Bestand ist beschädigt: %1</translation>
    </message>
    <message>
        <source>the schedule %1, %2, is in use by %3. Give them another one first; nothing was deleted</source>
        <translation>der Zeitplan %1, %2, ist in Gebrauch bei %3. Geben Sie ihnen zuerst einen anderen; es wurde nichts gelöscht</translation>
    </message>
    <message>
        <source>the highest id is taken: give one that is free</source>
        <translation>die höchste Nummer ist vergeben: eine freie angeben</translation>
    </message>
    <message>
        <source>the unit has a schedule %1 already: give another id</source>
        <translation>die Anlage hat schon einen Zeitplan %1: eine andere Nummer angeben</translation>
    </message>
    <message>
        <source>the schedule %1 has the name &apos;{value}&apos; already</source>
        <translation>der Zeitplan %1 heißt schon „{value}“</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; has an apostrophe, with which no report could be asked for it: write ’ instead</source>
        <translation>{field} „{value}“ hat einen Apostroph, mit dem kein Bericht danach fragen könnte: stattdessen ’ schreiben</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; would be taken for an id</source>
        <translation>{field} „{value}“ hielte man für eine Nummer</translation>
    </message>
    <message>
        <source>every unit has the schedule &apos;{value}&apos;, as it is</source>
        <translation>den Zeitplan „{value}“ hat jede Anlage, so wie er ist</translation>
    </message>
    <message>
        <source>the unit has no schedule &apos;{value}&apos;</source>
        <translation>die Anlage hat keinen Zeitplan „{value}“</translation>
    </message>
    <message>
        <source>%1 schedules are called &apos;{value}&apos;: give the id instead</source>
        <translation>%1 Zeitpläne heißen „{value}“: stattdessen die Nummer angeben</translation>
    </message>
    <message>
        <source>door %1 has the name &apos;{value}&apos; already</source>
        <translation>Tür %1 heißt schon „{value}“</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; would be taken for a door&apos;s number or for no door</source>
        <translation>{field} „{value}“ hielte man für die Nummer einer Tür oder für keine Tür</translation>
    </message>
    <message>
        <source>%1 doors are called &apos;{value}&apos;: give the door&apos;s number instead</source>
        <translation>%1 Türen heißen „{value}“: stattdessen die Nummer der Tür angeben</translation>
    </message>
    <message>
        <source>the unit has no door &apos;{value}&apos;</source>
        <translation>die Anlage hat keine Tür „{value}“</translation>
    </message>
    <message>
        <source>someone else has changed the unit meanwhile</source>
        <translation>jemand anderes hat die Anlage inzwischen geändert</translation>
    </message>
    <message>
        <source>someone else has changed the credential meanwhile</source>
        <translation>jemand anderes hat den Ausweis inzwischen geändert</translation>
    </message>
    <message>
        <source>someone else has changed the directory code meanwhile</source>
        <translation>jemand anderes hat den Rufcode inzwischen geändert</translation>
    </message>
    <message>
        <source>someone else has changed the tenant meanwhile</source>
        <translation>jemand anderes hat den Mieter inzwischen geändert</translation>
    </message>
    <message>
        <source>someone else has deleted the credential meanwhile</source>
        <translation>jemand anderes hat den Ausweis inzwischen gelöscht</translation>
    </message>
    <message>
        <source>someone else has deleted the directory code meanwhile</source>
        <translation>jemand anderes hat den Rufcode inzwischen gelöscht</translation>
    </message>
    <message>
        <source>someone else has deleted the tenant meanwhile</source>
        <translation>jemand anderes hat den Mieter inzwischen gelöscht</translation>
    </message>
    <message>
        <source>someone else has changed or deleted the unit meanwhile</source>
        <translation>jemand anderes hat die Anlage inzwischen geändert oder gelöscht</translation>
    </message>
    <message>
        <source>someone else has changed or deleted the credential meanwhile</source>
        <translation>jemand anderes hat den Ausweis inzwischen geändert oder gelöscht</translation>
    </message>
    <message>
        <source>someone else has changed or deleted the directory code meanwhile</source>
        <translation>jemand anderes hat den Rufcode inzwischen geändert oder gelöscht</translation>
    </message>
    <message>
        <source>someone else has changed or deleted the tenant meanwhile</source>
        <translation>jemand anderes hat den Mieter inzwischen geändert oder gelöscht</translation>
    </message>
    <message>
        <source>someone else has changed the holder of the credential meanwhile</source>
        <translation>jemand anderes hat den Inhaber des Ausweises inzwischen geändert</translation>
    </message>
    <message>
        <source>someone else has changed the holder of the directory code meanwhile</source>
        <translation>jemand anderes hat einen Mieter mit dem Rufcode inzwischen geändert</translation>
    </message>
    <message>
        <source>someone else has changed the tenant who was to get the credential meanwhile</source>
        <translation>jemand anderes hat den Mieter, der den Ausweis bekommen sollte, inzwischen geändert</translation>
    </message>
    <message>
        <source>someone else has changed the tenant who was to get the directory code meanwhile</source>
        <translation>jemand anderes hat den Mieter, der den Rufcode bekommen sollte, inzwischen geändert</translation>
    </message>
    <message>
        <source>what someone else has done meanwhile calls for a question</source>
        <translation>was jemand anderes inzwischen getan hat, verlangt eine Rückfrage</translation>
    </message>
    <message>
        <source>the store was moved or replaced meanwhile and has to be opened again</source>
        <translation>der Bestand wurde inzwischen verschoben oder ersetzt und muss neu geöffnet werden</translation>
    </message>
    <message>
        <source>cannot %1: %2</source>
        <translation>%1 ist nicht gelungen: %2</translation>
    </message>
    <message>
        <source>open the credential screen</source>
        <translation>Das Öffnen der Ausweise</translation>
    </message>
    <message>
        <source>fill the credential screen again</source>
        <translation>Das erneute Füllen der Ausweise</translation>
    </message>
    <message>
        <source>load the credential</source>
        <translation>Das Laden des Ausweises</translation>
    </message>
    <message>
        <source>open the directory-code screen</source>
        <translation>Das Öffnen der Rufcodes</translation>
    </message>
    <message>
        <source>load the directory code</source>
        <translation>Das Laden des Rufcodes</translation>
    </message>
    <message>
        <source>begin a new directory code</source>
        <translation>Der Beginn eines neuen Rufcodes</translation>
    </message>
    <message>
        <source>open the report</source>
        <translation>Das Öffnen des Berichts</translation>
    </message>
    <message>
        <source>read the stored directory codes</source>
        <translation>Das Lesen der gespeicherten Rufcodes</translation>
    </message>
    <message>
        <source>queue the holder&apos;s step</source>
        <translation>Das Einreihen des Schritts für den Inhaber</translation>
    </message>
    <message>
        <source>cannot load the credential: somebody else has deleted it meanwhile</source>
        <translation>Der Ausweis kann nicht geladen werden: jemand anderes hat ihn inzwischen gelöscht</translation>
    </message>
    <message>
        <source>cannot delete a credential: none is selected</source>
        <translation>Es kann kein Ausweis gelöscht werden: keiner ist gewählt</translation>
    </message>
    <message>
        <source>cannot delete a directory code: none is selected</source>
        <translation>Es kann kein Rufcode gelöscht werden: keiner ist gewählt</translation>
    </message>
    <message>
        <source>cancelled; nothing was changed</source>
        <translation>abgebrochen; es wurde nichts geändert</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is empty: lists show tenants by it</source>
        <translation>{field} „{value}“ ist leer: in Listen steht der Mieter unter diesem Namen</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is empty: give a number, or leave it out</source>
        <translation>{field} „{value}“ ist leer: eine Nummer angeben</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is empty: leave it out for a single credential</source>
        <translation>{field} „{value}“ ist leer: für einen einzigen Ausweis wird keine angegeben</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is empty</source>
        <translation>{field} „{value}“ ist leer</translation>
    </message>
    <message>
        <source>{field} is needed: lists show tenants by it</source>
        <translation>{field} fehlt: in Listen steht der Mieter unter diesem Namen</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is below 0</source>
        <translation>{field} „{value}“ ist kleiner als 0</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is too large a number</source>
        <translation>{field} „{value}“ ist eine zu große Zahl</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is no number: it would be stored as %1</source>
        <translation>{field} „{value}“ ist keine Zahl: gespeichert würde %1</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is longer than the %1 digits of this unit&apos;s codes</source>
        <translation>{field} „{value}“ ist länger als die %1 Ziffern der Codes dieser Anlage</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; must be a whole number from 1 to %1, in digits alone</source>
        <translation>{field} „{value}“ muss eine ganze Zahl von 1 bis %1 sein, nur mit Ziffern geschrieben</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; must be a whole number from %1 to %2, in digits alone</source>
        <translation>{field} „{value}“ muss eine ganze Zahl von %1 bis %2 sein, nur mit Ziffern geschrieben</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is no whole number: write it in digits alone</source>
        <translation>{field} „{value}“ ist keine ganze Zahl: nur mit Ziffern schreiben</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is no date: write it as 2026-12-31, 12/31/2026 or 31 Dec 2026, with a time as in &apos;2026-12-31 18:00&apos;</source>
        <translation>{field} „{value}“ ist kein Datum: es als 2026-12-31, 12/31/2026 oder 31 Dec 2026 schreiben, mit einer Uhrzeit wie in „2026-12-31 18:00“</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; lies outside the years that the screen offers</source>
        <translation>{field} „{value}“ liegt außerhalb der Jahre, die der Bildschirm anbietet</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; cannot be typed into a box: it has control characters or bytes that are not UTF-8</source>
        <translation>{field} „{value}“ kann in kein Feld eingegeben werden: es hat Steuerzeichen oder Bytes, die kein UTF-8 sind</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; has %1 characters, and takes %2 at most</source>
        <translation>{field} „{value}“ hat %1 Zeichen, und höchstens %2 sind möglich</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; has an apostrophe, which would end the text in a statement: write %1</source>
        <translation>{field} „{value}“ hat einen Apostroph, der den Text in einer Anweisung beenden würde: stattdessen %1 schreiben</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; has separators between its digits: write %1</source>
        <translation>{field} „{value}“ hat Trennzeichen zwischen den Ziffern: %1 schreiben</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is neither 1 nor 4</source>
        <translation>{field} „{value}“ ist weder 1 noch 4</translation>
    </message>
    <message>
        <source>{field}: &apos;{value}&apos; is neither yes nor no</source>
        <translation>{field}: „{value}“ ist weder Ja noch Nein</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is neither %1 nor %2</source>
        <translation>{field} „{value}“ ist weder %1 noch %2</translation>
    </message>
    <message>
        <source>leave {field} out: only transmitters have buttons</source>
        <translation>{field} leer lassen: nur Sender haben Tasten</translation>
    </message>
    <message>
        <source>leave {field} out: only transmitters have it</source>
        <translation>{field} leer lassen: nur Sender haben das</translation>
    </message>
    <message>
        <source>leave {field} out: this unit ignores facility codes</source>
        <translation>{field} leer lassen: diese Anlage beachtet keine Objektcodes</translation>
    </message>
    <message>
        <source>leave {field} out: only cards have a door</source>
        <translation>{field} leer lassen: nur Karten haben eine Tür</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; must be left empty: only cards have a door</source>
        <translation>{field} „{value}“ muss leer bleiben: nur Karten haben eine Tür</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; must be left empty: only transmitters have one</source>
        <translation>{field} „{value}“ muss leer bleiben: nur Sender haben das</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; must be left empty: this unit ignores facility codes</source>
        <translation>{field} „{value}“ muss leer bleiben: diese Anlage beachtet keine Objektcodes</translation>
    </message>
    <message>
        <source>leave {field} out: there is no extension, and without one the delay is always %1</source>
        <translation>{field} weglassen: es gibt keine Durchwahl, und ohne sie ist die Wartezeit immer %1</translation>
    </message>
    <message>
        <source>the directory code %1 is shown as {value} and would be stored so: renumber it first</source>
        <translation>der Rufcode %1 wird als {value} angezeigt und würde so gespeichert: ihn zuerst umnummerieren</translation>
    </message>
    <message>
        <source>unit %1 has no credential &apos;{value}&apos;</source>
        <translation>die Anlage %1 hat keinen Ausweis „{value}“</translation>
    </message>
    <message>
        <source>unit %1 has no directory code &apos;{value}&apos;</source>
        <translation>die Anlage %1 hat keinen Rufcode „{value}“</translation>
    </message>
    <message>
        <source>unit %1 has no directory code in row %2</source>
        <translation>die Anlage %1 hat keinen Rufcode in Zeile %2</translation>
    </message>
    <message>
        <source>unit %1 has no tenant &apos;{value}&apos;</source>
        <translation>die Anlage %1 hat keinen Mieter „{value}“</translation>
    </message>
    <message>
        <source>%1 rows have the directory code &apos;{value}&apos;: name a row instead (rid:%2)</source>
        <translation>%1 Zeilen haben den Rufcode „{value}“: stattdessen eine Zeile nennen (rid:%2)</translation>
    </message>
    <message>
        <source>{field}: %1 rows have the directory code &apos;{value}&apos;: name a row instead (rid:%2)</source>
        <translation>{field}: %1 Zeilen haben den Rufcode „{value}“: stattdessen eine Zeile nennen (rid:%2)</translation>
    </message>
    <message>
        <source>{field}: this unit has no directory code &apos;{value}&apos;</source>
        <translation>{field}: diese Anlage hat keinen Rufcode „{value}“</translation>
    </message>
    <message>
        <source>{field}: this unit has no door &apos;{value}&apos;</source>
        <translation>{field}: diese Anlage hat keine Tür „{value}“</translation>
    </message>
    <message>
        <source>{field}: %1 doors are called &apos;{value}&apos;: give the door&apos;s number instead</source>
        <translation>{field}: %1 Türen heißen „{value}“: stattdessen die Nummer der Tür angeben</translation>
    </message>
    <message>
        <source>{field}: &apos;{value}&apos; is none of the unit&apos;s groups: %1</source>
        <translation>{field}: „{value}“ ist keine Gruppe der Anlage: %1</translation>
    </message>
    <message>
        <source>{field}: &apos;{value}&apos; is none of the unit&apos;s schedules: %1</source>
        <translation>{field}: „{value}“ ist kein Zeitplan der Anlage: %1</translation>
    </message>
    <message>
        <source>{field}: %1 schedules are called &apos;{value}&apos;: give the id instead (%2)</source>
        <translation>{field}: %1 Zeitpläne heißen „{value}“: stattdessen die Nummer angeben (%2)</translation>
    </message>
    <message>
        <source>there is no entry &apos;{value}&apos; in the history</source>
        <translation>im Verlauf gibt es keinen Eintrag „{value}“</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is one too many: a tenant holds at most %1</source>
        <translation>{field} „{value}“ ist zu viel: ein Mieter hat höchstens %1</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is held by %1: take it from there first</source>
        <translation>{field} „{value}“ gehört %1: zuerst dort wegnehmen</translation>
    </message>
    <message>
        <source>%1 is a resident: {field} &apos;{value}&apos; can be given to a tenant who is none</source>
        <translation>%1 ist Bewohner: {field} „{value}“ kann nur ein Mieter bekommen, der keiner ist</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; can be given to one tenant only: name one</source>
        <translation>{field} „{value}“ kann nur ein Mieter bekommen: einen wählen</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos;: the period of %1 would end before it begins, on %2</source>
        <translation>{field} „{value}“: der Zeitraum von %1 würde vor seinem Beginn am %2 enden</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is no date: a lease ends on one</source>
        <translation>{field} „{value}“ ist kein Datum: eine Mietzeit endet an einem</translation>
    </message>
    <message>
        <source>the unit has no link code left</source>
        <translation>die Anlage hat keinen Verknüpfungscode mehr frei</translation>
    </message>
    <message>
        <source>The unit has no link code left</source>
        <translation>Die Anlage hat keinen Verknüpfungscode mehr frei</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; needs two values, as in &apos;... between 5 AND 9&apos;</source>
        <translation>{field} „{value}“ braucht zwei Werte</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; ends without a value: &apos;%1&apos; takes a number</source>
        <translation>{field} „{value}“ endet ohne einen Wert: „%1“ nimmt eine Zahl</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos;: &apos;%1&apos; takes %2, and &apos;%3&apos; is none</source>
        <translation>{field} „{value}“: „%1“ nimmt %2, und „%3“ ist keine</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>a whole number from %1 to %2, in digits alone</source>
        <translation>eine ganze Zahl von %1 bis %2, nur mit Ziffern geschrieben</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos;: the first value of a range must not be above the second</source>
        <translation>{field} „{value}“: der erste Wert eines Bereichs darf nicht größer als der zweite sein</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; ends without a text to look for; &apos;equal&apos; without one finds the rows that have none</source>
        <translation>{field} „{value}“ endet ohne einen Text, der gesucht wird; „equal“ ohne Text findet die Zeilen, die keinen haben</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; ends without a value: &apos;%1&apos; takes the name of a schedule</source>
        <translation>{field} „{value}“ endet ohne einen Wert: „%1“ nimmt den Namen eines Zeitplans</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos;: &apos;%1&apos; is none of the unit&apos;s schedules: %2</source>
        <translation>{field} „{value}“: „%1“ ist kein Zeitplan der Anlage: %2</translation>
    </message>
    <message>
        <source>%1 cannot be undone: %2 then; nothing was changed</source>
        <translation>%1 kann nicht rückgängig gemacht werden, weil dann gilt: %2; es wurde nichts geändert</translation>
    </message>
    <message>
        <source>%1 cannot be undone: row %2 of %3 is no more as it left it%4; nothing was changed</source>
        <translation>%1 kann nicht rückgängig gemacht werden: Zeile %2 von %3 ist nicht mehr so, wie er sie hinterließ%4; es wurde nichts geändert</translation>
    </message>
    <message>
        <source>%1 cannot be undone: it changed only what the unit holds, which stays as the unit has it; a change of a tenant or a code queues its step again</source>
        <translation>%1 kann nicht rückgängig gemacht werden: er änderte nur, was die Anlage hat, und das bleibt so; eine Änderung eines Mieters oder Codes reiht ihren Schritt neu ein</translation>
    </message>
    <message>
        <source>the line has neither a name nor a card nor a directory code</source>
        <translation>die Zeile hat weder einen Namen noch eine Karte noch einen Rufcode</translation>
    </message>
    <message>
        <source>%1 is stored already</source>
        <translation>%1 ist schon gespeichert</translation>
    </message>
    <message>
        <source>%1 has two credentials already</source>
        <translation>%1 hat schon zwei Ausweise</translation>
    </message>
    <message>
        <source>both cards of the line are the same one</source>
        <translation>beide Karten der Zeile sind dieselbe</translation>
    </message>
    <message>
        <source>%1 is in line %2 already: one line holds all that a tenant has, a second card in columns of its own</source>
        <translation>%1 steht schon in Zeile %2: eine Zeile hat alles, was ein Mieter hat, eine zweite Karte in eigenen Spalten</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is held by %1</source>
        <translation>{field} „{value}“ gehört %1</translation>
    </message>
    <message>
        <source>{field} is empty: no credential has the number &apos;%1&apos;, and a new one needs a type: %2</source>
        <translation>{field} ist leer: kein Ausweis hat die Nummer „%1“, und ein neuer braucht einen Typ: %2</translation>
    </message>
    <message>
        <source>{field}: several credentials have the number &apos;{value}&apos;: say the type and the facility code, too</source>
        <translation>{field}: mehrere Ausweise haben die Nummer „{value}“: auch Typ und Objektcode angeben</translation>
    </message>
    <message>
        <source>{field}: several credentials are listed as &apos;{value}&apos;: say the type, the number and the facility code in columns of their own</source>
        <translation>{field}: mehrere Ausweise stehen als „{value}“ in der Liste: Typ, Nummer und Objektcode in eigenen Spalten angeben</translation>
    </message>
    <message>
        <source>{field}: the unit has no credential &apos;{value}&apos;: one that is to be issued needs its type and number in columns of their own</source>
        <translation>{field}: die Anlage hat keinen Ausweis „{value}“: einer, der ausgegeben werden soll, braucht Typ und Nummer in eigenen Spalten</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is no name: the line seems to add the others up</source>
        <translation>{field} „{value}“ ist kein Name: die Zeile scheint die anderen zusammenzuzählen</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; has nobody who could dial it: {code} is empty</source>
        <translation>{field} „{value}“ hat niemanden, der dort anrufen könnte: {code} ist leer</translation>
    </message>
    <message>
        <source>{field}: several rows have the directory code &apos;{value}&apos;</source>
        <translation>{field}: mehrere Zeilen haben den Rufcode „{value}“</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is no tenant of this unit to whom the screen assigns credentials</source>
        <translation>{field} „{value}“ ist kein Mieter dieser Anlage, dem der Bildschirm Ausweise zuordnet</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; has two credentials already</source>
        <translation>{field} „{value}“ hat schon zwei Ausweise</translation>
    </message>
    <message>
        <source>the file is empty: its first line must hold headings</source>
        <translation>die Datei ist leer: ihre erste Zeile muss Überschriften haben</translation>
    </message>
    <message>
        <source>the file is empty: its first line must hold headings out of %1</source>
        <translation>die Datei ist leer: ihre erste Zeile muss Überschriften aus dieser Liste haben: %1</translation>
    </message>
    <message>
        <source>line %1: the column &quot;%2&quot; is there twice</source>
        <translation>Zeile %1: die Spalte „%2“ ist zweimal da</translation>
    </message>
    <message>
        <source>line %1: the column &quot;%2&quot; is missing</source>
        <translation>Zeile %1: die Spalte „%2“ fehlt</translation>
    </message>
    <message>
        <source>the line is not valid UTF-8: save the file as UTF-8, or say which encoding it has</source>
        <translation>die Zeile ist kein gültiges UTF-8: die Datei als UTF-8 speichern oder sagen, welche Kodierung sie hat</translation>
    </message>
    <message>
        <source>a quote that opens a cell is never closed</source>
        <translation>ein Anführungszeichen, das eine Zelle öffnet, wird nie geschlossen</translation>
    </message>
    <message>
        <source>%1 cells, but %2 headings</source>
        <translation>%1 Zellen, aber %2 Überschriften</translation>
    </message>
    <message>
        <source>the directory code %1 stands in line %2 already</source>
        <translation>der Rufcode %1 steht schon in Zeile %2</translation>
    </message>
    <message>
        <source>the directory code must be a number of digits</source>
        <translation>der Rufcode muss eine Zahl aus Ziffern sein</translation>
    </message>
    <message>
        <source>the directory code has more than 15 digits</source>
        <translation>der Rufcode hat mehr als 15 Ziffern</translation>
    </message>
    <message>
        <source>%1 fields instead of %2</source>
        <translation>%1 Felder statt %2</translation>
    </message>
    <message>
        <source>the phone number is empty</source>
        <translation>die Telefonnummer ist leer</translation>
    </message>
    <message>
        <source>do not disturb is on, but has no schedule</source>
        <translation>„Nicht stören“ ist an, hat aber keinen Zeitplan</translation>
    </message>
    <message>
        <source>call forwarding is on, but has no schedule</source>
        <translation>die Rufweiterleitung ist an, hat aber keinen Zeitplan</translation>
    </message>
    <message>
        <source>call forwarding is on, but has no phone number</source>
        <translation>die Rufweiterleitung ist an, hat aber keine Telefonnummer</translation>
    </message>
    <message>
        <source>the end date is not later than the start date</source>
        <translation>der letzte Tag ist nicht später als der erste</translation>
    </message>
    <message>
        <source>the directory code %1 is longer than the %2 digits of this unit&apos;s codes; nothing was changed</source>
        <translation>der Rufcode %1 ist länger als die %2 Ziffern der Codes dieser Anlage; es wurde nichts geändert</translation>
    </message>
    <message>
        <source>the unit would hold %1 combined codes, and its type allows %2; nothing was changed</source>
        <translation>die Anlage hätte %1 Codes, und ihr Typ erlaubt %2; es wurde nichts geändert</translation>
    </message>
    <message>
        <source>the line is longer than %1 bytes</source>
        <translation>die Zeile ist länger als %1 Bytes</translation>
    </message>
    <message>
        <source>never sent to the unit</source>
        <translation>nie an die Anlage gesendet</translation>
    </message>
    <message>
        <source>its last change was not sent</source>
        <translation>seine letzte Änderung wurde nicht gesendet</translation>
    </message>
    <message>
        <source>taken from %1</source>
        <translation>wird %1 genommen</translation>
    </message>
    <message>
        <source>unit %1 &apos;%2&apos; has no type: nothing can be stored in it until it has one (&apos;qorhost units edit %3 --type TYPE&apos;)</source>
        <translation>die Anlage %1 „%2“ hat keinen Typ: in ihr kann nichts gespeichert werden, bis sie einen hat („qorhost units edit %3 --type TYPE“)</translation>
    </message>
    <message>
        <source>unit %1 &apos;%2&apos; has the type &apos;%3&apos;, whose capacity is unknown: nothing can be stored in it until it has one (&apos;qorhost units edit %4 --capacity N&apos;)</source>
        <translation>die Anlage %1 „%2“ hat den Typ „%3“, dessen Größe unbekannt ist: in ihr kann nichts gespeichert werden, bis sie eine hat („qorhost units edit %4 --capacity N“)</translation>
    </message>
    <message>
        <source>there is no database &apos;%1&apos;</source>
        <translation>es gibt keinen Bestand „%1“</translation>
    </message>
    <message>
        <source>&apos;%1&apos; exists already</source>
        <translation>„%1“ gibt es schon</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was made by somebody else meanwhile, and is left as it is</source>
        <translation>„%1“ hat inzwischen jemand anderes angelegt und bleibt, wie es ist</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no store of this program and is not replaced</source>
        <translation>„%1“ ist kein Bestand dieses Programms und wird nicht ersetzt</translation>
    </message>
    <message>
        <source>&apos;%1&apos; belongs to the store itself: name another file</source>
        <translation>„%1“ gehört zum Bestand selbst: eine andere Datei nennen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was left behind by a store that is gone: move it away first</source>
        <translation>„%1“ hat ein Bestand hinterlassen, den es nicht mehr gibt: die Datei zuerst wegräumen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is in an older form and has a log beside it: open it once as a store, which brings it up to date</source>
        <translation>„%1“ hat eine ältere Form und ein Protokoll daneben: einmal als Bestand öffnen, das bringt ihn auf den neuen Stand</translation>
    </message>
    <message>
        <source>cannot write &apos;%1&apos;: there is no folder &apos;%2&apos;</source>
        <translation>„%1“ kann nicht geschrieben werden: es gibt keinen Ordner „%2“</translation>
    </message>
    <message>
        <source>there is no file &apos;%1&apos;</source>
        <translation>es gibt keine Datei „%1“</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is larger than %2 MB: split it, with the headings in each part; nothing was imported</source>
        <translation>„%1“ ist größer als %2 MB: die Datei teilen, mit den Überschriften in jedem Teil; es wurde nichts importiert</translation>
    </message>
    <message>
        <source>the printer, or the file, takes nothing</source>
        <translation>der Drucker oder die Datei nimmt nichts an</translation>
    </message>
    <message>
        <source>Printing needs &apos;%1&apos; and Qt&apos;s library for printers (Debian: libqt6printsupport6), which cannot be loaded; a report can be saved as PDF</source>
        <translation>Drucken braucht „%1“ und die Bibliothek von Qt für Drucker (Debian: libqt6printsupport6), und das kann nicht geladen werden; ein Bericht kann als PDF gespeichert werden</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is a database of another program: name another file</source>
        <translation>„%1“ ist die Datenbank eines anderen Programms: eine andere Datei nennen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is empty: create the store first</source>
        <translation>„%1“ ist leer: zuerst den Bestand anlegen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was written by a newer version of this program (schema %2, this one reads up to %3): use that version</source>
        <translation>„%1“ hat eine neuere Version dieses Programms geschrieben (Schema %2, diese liest bis %3): jene Version verwenden</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is being replaced again and again: try again later</source>
        <translation>„%1“ wird immer wieder ersetzt: es später noch einmal versuchen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is damaged: %2</source>
        <translation>„%1“ ist beschädigt: %2</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos;: %2 (%3)</source>
        <translation>Der Bestand „%1“: %2 (%3)</translation>
    </message>
    <message>
        <source>Cannot open the store &apos;%1&apos;: %2 (%3)</source>
        <translation>Der Bestand „%1“ kann nicht geöffnet werden: %2 (%3)</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos; cannot be written: %2</source>
        <translation>In den Bestand „%1“ kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos; is in use: %2</source>
        <translation>Der Bestand „%1“ ist in Gebrauch: %2</translation>
    </message>
    <message>
        <source>The statement failed: %1 (%2)</source>
        <translation>Die Anweisung ist fehlgeschlagen: %1 (%2)</translation>
    </message>
    <message>
        <source>The statement cannot be run: %1 (%2)</source>
        <translation>Die Anweisung kann nicht ausgeführt werden: %1 (%2)</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos; was moved or replaced while it was open: open it again</source>
        <translation>Der Bestand „%1“ wurde verschoben oder ersetzt, während er offen war: ihn neu öffnen</translation>
    </message>
    <message>
        <source>The store was moved or replaced while it was open: nothing was stored</source>
        <translation>Der Bestand wurde verschoben oder ersetzt, während er offen war: es wurde nichts gespeichert</translation>
    </message>
    <message>
        <source>Somebody else has changed the unit meanwhile: nothing was stored</source>
        <translation>Jemand anderes hat die Anlage inzwischen geändert: es wurde nichts gespeichert</translation>
    </message>
    <message>
        <source>The operation was given up after an earlier failure: nothing was stored</source>
        <translation>Der Vorgang wurde nach einem Fehler aufgegeben: es wurde nichts gespeichert</translation>
    </message>
    <message>
        <source>The operation was cancelled: nothing was stored</source>
        <translation>Der Vorgang wurde abgebrochen: es wurde nichts gespeichert</translation>
    </message>
    <message>
        <source>Another user&apos;s program has the store &apos;%1&apos; open: let it finish, then try again</source>
        <translation>Das Programm eines anderen Benutzers hat den Bestand „%1“ offen: es beenden lassen und noch einmal versuchen</translation>
    </message>
    <message>
        <source>another program is writing to the store: nothing was changed; let it finish, then try again</source>
        <translation>ein anderes Programm schreibt in den Bestand: es wurde nichts geändert; es beenden lassen und noch einmal versuchen</translation>
    </message>
    <message>
        <source>check the rights on the file and its folder, or open it for reading only</source>
        <translation>die Rechte an der Datei und ihrem Ordner prüfen</translation>
    </message>
    <message>
        <source>the store cannot be written: check the rights on the file and its folder, or whether it was opened for reading only</source>
        <translation>in den Bestand kann nicht geschrieben werden: die Rechte an der Datei und ihrem Ordner prüfen</translation>
    </message>
    <message>
        <source>the disk is full: make room, then try again</source>
        <translation>der Datenträger ist voll: Platz schaffen und noch einmal versuchen</translation>
    </message>
    <message>
        <source>the disk could not be read or written: check it, then try again</source>
        <translation>vom Datenträger konnte nicht gelesen oder auf ihn geschrieben werden: ihn prüfen und noch einmal versuchen</translation>
    </message>
    <message>
        <source>the file is not a store: choose another one</source>
        <translation>die Datei ist kein Bestand: eine andere wählen</translation>
    </message>
    <message>
        <source>the store is damaged: put back a copy of it</source>
        <translation>der Bestand ist beschädigt: eine Sicherung zurückspielen</translation>
    </message>
    <message>
        <source>the file cannot be opened: check its name and the rights on it and its folder</source>
        <translation>die Datei kann nicht geöffnet werden: ihren Namen und die Rechte an ihr und ihrem Ordner prüfen</translation>
    </message>
    <message>
        <source>there is not enough memory: close other programs, then try again</source>
        <translation>der Speicher reicht nicht: andere Programme schließen und noch einmal versuchen</translation>
    </message>
    <message>
        <source>the query asks for far more work than a report: narrow it</source>
        <translation>die Abfrage verlangt weit mehr Arbeit als ein Bericht: sie einschränken</translation>
    </message>
    <message>
        <source>unit %1%2 has no settings: give it a type (&apos;qorhost units edit %3 --type TYPE&apos;)</source>
        <translation>die Anlage %1%2 hat keine Einstellungen: ihr einen Typ geben („qorhost units edit %3 --type TYPE“)</translation>
    </message>
    <message>
        <source>no step &apos;{value}&apos; waits for the unit: what was changed again since it was handed over waits at a later place</source>
        <translation>kein Schritt „{value}“ wartet auf die Anlage: was nach der Übergabe noch einmal geändert wurde, wartet an späterer Stelle</translation>
    </message>
    <message>
        <source>%1 loses %2. %3 has two credentials and loses %4. Go on?</source>
        <translation>%1 verliert %2. %3 hat zwei Ausweise und verliert %4. Fortfahren?</translation>
    </message>
    <message>
        <source>%1 has two credentials and loses %2. Go on?</source>
        <translation>%1 hat zwei Ausweise und verliert %2. Fortfahren?</translation>
    </message>
    <message>
        <source>%1 loses %2. Go on?</source>
        <translation>%1 verliert %2. Fortfahren?</translation>
    </message>
    <message>
        <source>%1 credentials are called &apos;{value}&apos;, say rid:N: %2</source>
        <translation>%1 Ausweise heißen „{value}“, geben Sie rid:N an: %2</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is none of %1</source>
        <translation>{field} „{value}“ ist nichts von %1</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; cannot be entered: the screen has %1</source>
        <translation>{field} „{value}“ kann nicht eingegeben werden: Der Bildschirm hat %1</translation>
    </message>
    <message>
        <source>leave {first day} and {last day} out: an inactive code has no period; {active} makes it active</source>
        <translation>{first day} und {last day} weglassen: Ein inaktiver Code hat keine Gültigkeit; {active} macht ihn aktiv</translation>
    </message>
    <message>
        <source>%1 tenants are called &apos;{value}&apos;: leave {field} empty and assign the credential by the tenant&apos;s id afterwards</source>
        <translation>%1 Mieter heißen „{value}“: {field} leer lassen und den Ausweis danach über die Kennung des Mieters zuordnen</translation>
    </message>
    <message>
        <source>%1 &apos;%2&apos; was not taken over: without an extension it is %3</source>
        <translation>%1 „%2“ wurde nicht übernommen: ohne Durchwahl ist es %3</translation>
    </message>
    <message>
        <source>%1 was not taken over: %2 is %3</source>
        <translation>%1 wurde nicht übernommen: %2 ist %3</translation>
    </message>
    <message>
        <source>line %1: %2; the store gave up there and nothing was imported</source>
        <translation>Zeile %1: %2; der Bestand gab dort auf, und nichts wurde importiert</translation>
    </message>
    <message>
        <source>line %1: there is no column %2; the columns are %3</source>
        <translation>Zeile %1: Es gibt keine Spalte %2; die Spalten sind %3</translation>
    </message>
    <message>
        <source>line %1: there are no columns %2; the columns are %3</source>
        <translation>Zeile %1: Es gibt keine Spalten %2; die Spalten sind %3</translation>
    </message>
    <message>
        <source>line %1: the file has no heading &apos;%2&apos;; its headings are &quot;%3&quot;</source>
        <translation>Zeile %1: Die Datei hat keine Überschrift „%2“; ihre Überschriften sind „%3“</translation>
    </message>
    <message>
        <source>line %1: %2; nothing was imported</source>
        <translation>Zeile %1: %2; nichts wurde importiert</translation>
    </message>
    <message>
        <source>column %1 has no heading, and &apos;%2&apos; stands in it: give it a heading, or say what it is</source>
        <translation>Spalte %1 hat keine Überschrift, und „%2“ steht darin: Geben Sie ihr eine, oder sagen Sie, was sie ist</translation>
    </message>
    <message>
        <source>line 1 has zero bytes between its letters, as UTF-16 has, so nothing was imported</source>
        <translation>Zeile 1 hat Nullbytes zwischen den Buchstaben, wie UTF-16, daher wurde nichts importiert</translation>
    </message>
    <message>
        <source>line %1 is not UTF-8, so nothing was imported</source>
        <translation>Zeile %1 ist kein UTF-8, daher wurde nichts importiert</translation>
    </message>
    <message>
        <source>byte %1 of the file is no %2: it has another encoding, or was cut off; nothing was imported</source>
        <translation>Byte %1 der Datei ist kein %2: Sie hat eine andere Kodierung oder wurde abgeschnitten; nichts wurde importiert</translation>
    </message>
    <message>
        <source>the file is a workbook of a spreadsheet program and no text, so nothing was imported: save the sheet as CSV there, and import that</source>
        <translation>die Datei ist eine Arbeitsmappe eines Tabellenprogramms und kein Text, daher wurde nichts importiert: das Blatt dort als CSV speichern und das importieren</translation>
    </message>
    <message>
        <source>cannot read &apos;%1&apos; to its end: %2; nothing was imported</source>
        <translation>„%1“ kann nicht zu Ende gelesen werden: %2; nichts wurde importiert</translation>
    </message>
    <message>
        <source>cannot read &apos;%1&apos; to its end; nothing was imported</source>
        <translation>„%1“ kann nicht zu Ende gelesen werden; nichts wurde importiert</translation>
    </message>
    <message>
        <source>cannot write &apos;%1&apos;: %2</source>
        <translation>„%1“ kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>the file ends within this line: if it was cut off there, the last cell is not whole</source>
        <translation>die Datei endet in dieser Zeile: Wurde sie dort abgeschnitten, so ist die letzte Zelle nicht vollständig</translation>
    </message>
    <message>
        <source>it was not stored</source>
        <translation>sie wurde nicht gespeichert</translation>
    </message>
    <message>
        <source>a cell is longer than %1 bytes</source>
        <translation>eine Zelle ist länger als %1 Bytes</translation>
    </message>
    <message>
        <source>there is text behind the closing quote of a cell</source>
        <translation>hinter dem schließenden Anführungszeichen einer Zelle steht Text</translation>
    </message>
    <message>
        <source>there are more than %1 cells</source>
        <translation>es sind mehr als %1 Zellen</translation>
    </message>
    <message>
        <source>a quote stands inside a cell: put the whole cell in quotes and write the quote twice</source>
        <translation>ein Anführungszeichen steht in einer Zelle: die ganze Zelle in Anführungszeichen setzen und dieses doppelt schreiben</translation>
    </message>
    <message>
        <source>{field}: there is no schedule &apos;{value}&apos; on the screen of this unit</source>
        <translation>{field}: Auf dem Bildschirm dieser Anlage gibt es keinen Zeitplan „{value}“</translation>
    </message>
    <message>
        <source>{field}: there is no %1 &apos;{value}&apos; on the screen of this unit</source>
        <translation>{field}: Auf dem Bildschirm dieser Anlage gibt es kein „{value}“ (%1)</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; does not tell in which order day, month and year stand: %1</source>
        <translation>{field} „{value}“ sagt nicht, in welcher Folge Tag, Monat und Jahr stehen: %1</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is no date in the order %1: write it so, or as 2026-12-31</source>
        <translation>{field} „{value}“ ist kein Datum in der Folge %1: so schreiben oder als 2026-12-31</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is no date: write it as 2026-12-31 or 31 Dec 2026, with a time as in &apos;2026-12-31 18:00&apos;</source>
        <translation>{field} „{value}“ ist kein Datum: als 2026-12-31 oder 31 Dec 2026 schreiben, mit Uhrzeit wie in „2026-12-31 18:00“</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; lies outside the years 100 to 9999</source>
        <translation>{field} „{value}“ liegt außerhalb der Jahre 100 bis 9999</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos;: the store has no fields to narrow this report by: TenantSelectionFields is empty</source>
        <translation>{field} „{value}“: Der Bestand hat keine Felder für Bedingungen: TenantSelectionFields ist leer</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos;: the report finds schedules by their names alone; rows without one have &apos;%1 = no&apos;</source>
        <translation>{field} „{value}“: Der Bericht findet Zeitpläne nur nach Namen; bei Zeilen ohne einen ist „%1“ nein</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has a question mark: a letter may have been lost when the file was written</source>
        <translation>„%1“ hat ein Fragezeichen: Beim Schreiben der Datei kann ein Buchstabe verloren gegangen sein</translation>
    </message>
    <message>
        <source>%1 has the directory code %2: whether the line means somebody else of that name cannot be told; with the tenant&apos;s id in the column &quot;%3&quot; it can</source>
        <translation>%1 hat den Rufcode %2: Ob die Zeile jemand anderen dieses Namens meint, lässt sich nicht sagen; mit der Kennung des Mieters in der Spalte „%3“ schon</translation>
    </message>
    <message>
        <source>%1 has the directory code %2, and is somebody else of the same name</source>
        <translation>%1 hat den Rufcode %2 und ist jemand anderer desselben Namens</translation>
    </message>
    <message>
        <source>several tenants are called %1: which one is meant can be told by the tenant&apos;s id in the column &quot;%2&quot;</source>
        <translation>mehrere Mieter heißen %1: Wer gemeint ist, sagt die Kennung des Mieters in der Spalte „%2“</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is not what the directory code %1 dials by line %2: that is &apos;%3&apos;</source>
        <translation>{field} „{value}“ ist nicht, was der Rufcode %1 nach Zeile %2 wählt: Das ist „%3“</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is not what the directory code %1 dials: that is &apos;%2&apos;</source>
        <translation>{field} „{value}“ ist nicht, was der Rufcode %1 wählt: Das ist „%2“</translation>
    </message>
    <message>
        <source>the directory code %1 stays as it is stored</source>
        <translation>der Rufcode %1 bleibt, wie er gespeichert ist</translation>
    </message>
    <message>
        <source>the directory code %1 stays as line %2 says</source>
        <translation>der Rufcode %1 bleibt, wie Zeile %2 sagt</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; and %1 &apos;%2&apos; stand in one line: leave one of them empty</source>
        <translation>{field} „{value}“ und %1 „%2“ stehen in einer Zeile: eines davon leer lassen</translation>
    </message>
    <message>
        <source>{field} is empty: lists show tenants by it; %1 stands for nobody</source>
        <translation>{field} ist leer: Listen zeigen Mieter danach; %1 steht für niemanden</translation>
    </message>
    <message>
        <source>the row: %1</source>
        <translation>die Zeile: %1</translation>
    </message>
    <message>
        <source>another row has the same code</source>
        <translation>eine andere Zeile hat denselben Code</translation>
    </message>
    <message>
        <source>its code is no whole number of up to 15 digits</source>
        <translation>ihr Code ist keine ganze Zahl von bis zu 15 Ziffern</translation>
    </message>
    <message>
        <source>its %1 lies in the year %2, and a unit knows 2000 to 2099</source>
        <translation>„%1“ liegt im Jahr %2, und eine Anlage kennt 2000 bis 2099</translation>
    </message>
    <message>
        <source>the directory code %1 did not come out as the unit has it: %2; nothing was changed</source>
        <translation>der Rufcode %1 wurde nicht so, wie ihn die Anlage hat: %2; nichts wurde geändert</translation>
    </message>
    <message>
        <source>the directory code %1 did not come out as the unit has it; nothing was changed</source>
        <translation>der Rufcode %1 wurde nicht so, wie ihn die Anlage hat; nichts wurde geändert</translation>
    </message>
    <message>
        <source>the phone number holds control characters</source>
        <translation>die Telefonnummer enthält Steuerzeichen</translation>
    </message>
    <message>
        <source>the extension holds control characters</source>
        <translation>die Durchwahl enthält Steuerzeichen</translation>
    </message>
    <message>
        <source>the call-forward phone number holds control characters</source>
        <translation>die Telefonnummer der Weiterleitung enthält Steuerzeichen</translation>
    </message>
    <message>
        <source>the call-forward extension holds control characters</source>
        <translation>die Durchwahl der Weiterleitung enthält Steuerzeichen</translation>
    </message>
    <message>
        <source>the display name holds control characters</source>
        <translation>der Anzeigename enthält Steuerzeichen</translation>
    </message>
    <message>
        <source>the do-not-disturb schedule %1 is none of this unit&apos;s schedules</source>
        <translation>der Zeitplan %1 für „Nicht stören“ ist keiner dieser Anlage</translation>
    </message>
    <message>
        <source>the call-forward schedule %1 is none of this unit&apos;s schedules</source>
        <translation>der Zeitplan %1 der Weiterleitung ist keiner dieser Anlage</translation>
    </message>
    <message>
        <source>the display mode must be 0, 1, 2 or 3</source>
        <translation>die Anzeigeart muss 0, 1, 2 oder 3 sein</translation>
    </message>
    <message>
        <source>the field &quot;%1&quot; must be 0 or 1</source>
        <translation>das Feld „%1“ muss 0 oder 1 sein</translation>
    </message>
    <message>
        <source>the %1 must be a number of digits</source>
        <translation>„%1“ muss eine Zahl aus Ziffern sein</translation>
    </message>
    <message>
        <source>the %1 is above %2</source>
        <translation>„%1“ ist größer als %2</translation>
    </message>
    <message>
        <source>the %1 is in use but empty</source>
        <translation>„%1“ ist in Gebrauch, aber leer</translation>
    </message>
    <message>
        <source>the %1 must be a day as YYMMDD</source>
        <translation>„%1“ muss ein Tag wie JJMMTT sein</translation>
    </message>
    <message>
        <source>the %1 must be a time as hhmm</source>
        <translation>„%1“ muss eine Uhrzeit wie hhmm sein</translation>
    </message>
    <message>
        <source>the file cannot be read from here on: %1</source>
        <translation>die Datei kann ab hier nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>the file is larger than %1 bytes: nothing from here on is read</source>
        <translation>die Datei ist größer als %1 Bytes: ab hier wird nichts gelesen</translation>
    </message>
    <message>
        <source>the line stands behind the end line: nothing from here on is read</source>
        <translation>die Zeile steht hinter der Schlusszeile: ab hier wird nichts gelesen</translation>
    </message>
    <message>
        <source>there are too many bad lines: nothing from here on is read</source>
        <translation>es gibt zu viele fehlerhafte Zeilen: ab hier wird nichts gelesen</translation>
    </message>
    <message>
        <source>the end line says &quot;%1&quot;, but %2 codes stand before it: the file is damaged, or the line must be &quot;%3&quot;</source>
        <translation>die Schlusszeile sagt „%1“, aber vor ihr stehen %2 Codes: Die Datei ist beschädigt, oder die Zeile muss „%3“ sein</translation>
    </message>
    <message>
        <source>the end line says &quot;%1&quot;, but %2 code stands before it: the file is damaged, or the line must be &quot;%3&quot;</source>
        <translation>die Schlusszeile sagt „%1“, aber vor ihr steht %2 Code: Die Datei ist beschädigt, oder die Zeile muss „%3“ sein</translation>
    </message>
    <message>
        <source>the file is cut off: its last line must be &quot;%1&quot; and the number of codes</source>
        <translation>die Datei ist abgeschnitten: Ihre letzte Zeile muss „%1“ und die Zahl der Codes sein</translation>
    </message>
    <message>
        <source>there are no codes, and no line &quot;%10&quot; that says so: the file may be cut off</source>
        <translation>es gibt keine Codes und keine Zeile „%10“, die das sagt: Die Datei kann abgeschnitten sein</translation>
    </message>
    <message>
        <source>the firmware&apos;s name is empty</source>
        <translation>der Name der Firmware ist leer</translation>
    </message>
    <message>
        <source>the firmware&apos;s name is too long</source>
        <translation>der Name der Firmware ist zu lang</translation>
    </message>
    <message>
        <source>the firmware&apos;s name is not valid UTF-8</source>
        <translation>der Name der Firmware ist kein gültiges UTF-8</translation>
    </message>
    <message>
        <source>the firmware&apos;s name holds a control character</source>
        <translation>der Name der Firmware enthält ein Steuerzeichen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is a link: name the store that it leads to</source>
        <translation>„%1“ ist eine Verknüpfung: den Bestand nennen, zu dem sie führt</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no name of a file: name another file</source>
        <translation>„%1“ ist kein Name einer Datei: eine andere Datei nennen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; belongs to the store and is never replaced: name another file</source>
        <translation>„%1“ gehört zum Bestand und wird nie ersetzt: eine andere Datei nennen</translation>
    </message>
    <message>
        <source>%1 is there twice, as RID %2 and RID %3</source>
        <translation>%1 ist zweimal da, als RID %2 und RID %3</translation>
    </message>
    <message>
        <source>%1 has the door %2, which is not there</source>
        <translation>%1 hat die Tür %2, die es nicht gibt</translation>
    </message>
    <message>
        <source>%1 has the schedule %2 for %3, which is not there</source>
        <translation>%1 hat den Zeitplan %2 für „%3“, den es nicht gibt</translation>
    </message>
    <message>
        <source>tenant %1 has the directory code RID %2, which is not there</source>
        <translation>Mieter %1 hat den Rufcode RID %2, den es nicht gibt</translation>
    </message>
    <message>
        <source>tenant %1 is in the group %2, which is not there</source>
        <translation>Mieter %1 ist in der Gruppe %2, die es nicht gibt</translation>
    </message>
    <message>
        <source>tenant %1 has the schedule %2 at door %3, which is not there</source>
        <translation>Mieter %1 hat den Zeitplan %2 an Tür %3, den es nicht gibt</translation>
    </message>
    <message>
        <source>tenant %1 holds the credential RID %2, which is not there</source>
        <translation>Mieter %1 hat den Ausweis RID %2, den es nicht gibt</translation>
    </message>
    <message>
        <source>%1 is held by %2 and by %3</source>
        <translation>%1 haben %2 und %3</translation>
    </message>
    <message>
        <source>the period of %1 ends before it begins</source>
        <translation>die Gültigkeit von %1 endet, bevor sie beginnt</translation>
    </message>
    <message>
        <source>its capacity is not known</source>
        <translation>ihre Kapazität ist nicht bekannt</translation>
    </message>
    <message>
        <source>the setting &apos;%1&apos; is %2, and %3 to %4 can be</source>
        <translation>die Einstellung „%1“ ist %2, und %3 bis %4 kann sie sein</translation>
    </message>
    <message>
        <source>%1 codes are in use, and the unit takes %2</source>
        <translation>%1 Codes sind in Gebrauch, und die Anlage nimmt %2</translation>
    </message>
    <message>
        <source>, since %1</source>
        <translation>, seit %1</translation>
    </message>
    <message>
        <source>nothing was deleted: there is no unit %1 any more</source>
        <translation>nichts wurde gelöscht: Die Anlage %1 gibt es nicht mehr</translation>
    </message>
    <message>
        <source>nothing was deleted: somebody else has changed what is in the unit meanwhile. Try again</source>
        <translation>nichts wurde gelöscht: Jemand anderer hat inzwischen geändert, was in der Anlage ist. Versuchen Sie es noch einmal</translation>
    </message>
    <message>
        <source>{field} is that of a type, and the unit has none: give {type} as well</source>
        <translation>{field} ist die eines Typs, und die Anlage hat keinen: auch {type} angeben</translation>
    </message>
    <message>
        <source>there is no type &apos;{value}&apos;: give one of %1, or {capacity} as well for a new one</source>
        <translation>es gibt keinen Typ „{value}“: einen von %1 angeben oder für einen neuen auch {capacity}</translation>
    </message>
    <message>
        <source>The capacity of the type &apos;%1&apos; is that of %2 as well.</source>
        <translation>Die Kapazität des Typs „%1“ ist auch die von %2.</translation>
    </message>
    <message>
        <source>%1 codes are in use in %2, more than a capacity of %3: nothing was changed</source>
        <translation>%1 Codes sind in Gebrauch (%2), mehr als eine Kapazität von %3: nichts wurde geändert</translation>
    </message>
    <message>
        <source>the directory code %1 in %2 is longer than %3: nothing was changed</source>
        <translation>der Rufcode %1 (%2) ist länger als %3: nichts wurde geändert</translation>
    </message>
    <message>
        <source>there is a unit %1 already: give another key</source>
        <translation>es gibt schon eine Anlage %1: einen anderen Schlüssel angeben</translation>
    </message>
    <message>
        <source>the highest key is taken: give one that is free</source>
        <translation>der höchste Schlüssel ist vergeben: einen angeben, der frei ist</translation>
    </message>
    <message>
        <source>there is no unit %1 any more</source>
        <translation>die Anlage %1 gibt es nicht mehr</translation>
    </message>
    <message>
        <source>a new unit needs {field}: one that is stored, or the name of a new one with its capacity; without nothing can be stored</source>
        <translation>eine neue Anlage braucht {field}: einen gespeicherten oder den Namen eines neuen mit seiner Kapazität; ohne kann nichts gespeichert werden</translation>
    </message>
    <message>
        <source>a new unit needs {field}</source>
        <translation>eine neue Anlage braucht {field}</translation>
    </message>
    <message>
        <source>{field} &apos;{value}&apos; is neither yes nor no</source>
        <translation>{field} „{value}“ ist weder ja noch nein</translation>
    </message>
    <message>
        <source>%1; nothing was imported</source>
        <translation>%1; nichts wurde importiert</translation>
    </message>
    <message>
        <source>directory code %1</source>
        <translation>Rufcode %1</translation>
    </message>
    <message>
        <source>tenant %1</source>
        <translation>Mieter %1</translation>
    </message>
    <message>
        <source>demo building</source>
        <translation>Demogebäude</translation>
    </message>
    <message>
        <source>init from %1</source>
        <translation>Übernahme aus %1</translation>
    </message>
    <message>
        <source>issue %1 %2 to %3</source>
        <translation>%1 %2 bis %3 ausgegeben</translation>
    </message>
    <message>
        <source>issue %1 %2</source>
        <translation>%1 %2 ausgegeben</translation>
    </message>
    <message>
        <source>edit credential %1</source>
        <translation>Ausweis %1 geändert</translation>
    </message>
    <message>
        <source>renumber credential %1</source>
        <translation>Ausweis %1 umnummeriert</translation>
    </message>
    <message>
        <source>replace credential %1 by %2</source>
        <translation>Ausweis %1 durch %2 ersetzt</translation>
    </message>
    <message>
        <source>delete credential %1</source>
        <translation>Ausweis %1 gelöscht</translation>
    </message>
    <message>
        <source>delete credentials of the report</source>
        <translation>Ausweise des Berichts gelöscht</translation>
    </message>
    <message>
        <source>edit %1 credentials</source>
        <translation>%1 Ausweise geändert</translation>
    </message>
    <message>
        <source>delete %1 credentials</source>
        <translation>%1 Ausweise gelöscht</translation>
    </message>
    <message>
        <source>add directory code %1</source>
        <translation>Rufcode %1 hinzugefügt</translation>
    </message>
    <message>
        <source>edit directory code %1</source>
        <translation>Rufcode %1 geändert</translation>
    </message>
    <message>
        <source>renumber directory code %1</source>
        <translation>Rufcode %1 umnummeriert</translation>
    </message>
    <message>
        <source>delete directory code %1</source>
        <translation>Rufcode %1 gelöscht</translation>
    </message>
    <message>
        <source>edit %1 directory codes</source>
        <translation>%1 Rufcodes geändert</translation>
    </message>
    <message>
        <source>delete %1 directory codes</source>
        <translation>%1 Rufcodes gelöscht</translation>
    </message>
    <message>
        <source>add tenant %1</source>
        <translation>Mieter %1 hinzugefügt</translation>
    </message>
    <message>
        <source>edit tenant %1</source>
        <translation>Mieter %1 geändert</translation>
    </message>
    <message>
        <source>delete tenant %1</source>
        <translation>Mieter %1 gelöscht</translation>
    </message>
    <message>
        <source>end the lease of tenant %1</source>
        <translation>Mietzeit von %1 beendet</translation>
    </message>
    <message>
        <source>edit %1 tenants</source>
        <translation>%1 Mieter geändert</translation>
    </message>
    <message>
        <source>delete %1 tenants</source>
        <translation>%1 Mieter gelöscht</translation>
    </message>
    <message>
        <source>end the lease of %1 tenants</source>
        <translation>Mietzeit von %1 Mietern beendet</translation>
    </message>
    <message>
        <source>import tenants</source>
        <translation>Mieter importiert</translation>
    </message>
    <message>
        <source>import credentials</source>
        <translation>Ausweise importiert</translation>
    </message>
    <message>
        <source>import directory codes</source>
        <translation>Rufcodes importiert</translation>
    </message>
    <message>
        <source>merge with the unit&apos;s directory codes</source>
        <translation>Mit den Rufcodes der Anlage abgeglichen</translation>
    </message>
    <message>
        <source>steps done</source>
        <translation>Schritte erledigt</translation>
    </message>
    <message>
        <source>undo entry %1: %2</source>
        <translation>Eintrag %1 rückgängig gemacht: %2</translation>
    </message>
    <message>
        <source>undo entries %1</source>
        <translation>Einträge %1 rückgängig gemacht</translation>
    </message>
    <message>
        <source>add unit %1</source>
        <translation>Anlage %1 hinzugefügt</translation>
    </message>
    <message>
        <source>edit unit %1</source>
        <translation>Anlage %1 geändert</translation>
    </message>
    <message>
        <source>edit units %1</source>
        <translation>Anlagen %1 geändert</translation>
    </message>
    <message>
        <source>delete unit %1</source>
        <translation>Anlage %1 gelöscht</translation>
    </message>
    <message>
        <source>delete units %1</source>
        <translation>Anlagen %1 gelöscht</translation>
    </message>
    <message>
        <source>rename door %1 to %2</source>
        <translation>Tür %1 in %2 umbenannt</translation>
    </message>
    <message>
        <source>rename %1 doors</source>
        <translation>%1 Türen umbenannt</translation>
    </message>
    <message>
        <source>add schedule %1</source>
        <translation>Zeitplan %1 hinzugefügt</translation>
    </message>
    <message>
        <source>rename schedule %1 to %2</source>
        <translation>Zeitplan %1 in %2 umbenannt</translation>
    </message>
    <message>
        <source>delete schedule %1</source>
        <translation>Zeitplan %1 gelöscht</translation>
    </message>
    <message>
        <source>sql, %1: %2; ...</source>
        <translation>SQL, %1: %2; ...</translation>
    </message>
    <message>
        <source>sql: %1</source>
        <translation>SQL: %1</translation>
    </message>
    <message>
        <source>entry %1 (%2, by %3, %4 UTC)</source>
        <translation>Eintrag %1 (%2, von %3, %4 UTC)</translation>
    </message>
    <message>
        <source>it is no whole number</source>
        <translation>es ist keine ganze Zahl</translation>
    </message>
    <message>
        <source>it is beyond 32 bits</source>
        <translation>es hat mehr als 32 Bit</translation>
    </message>
    <message>
        <source>it is no number</source>
        <translation>es ist keine Zahl</translation>
    </message>
    <message>
        <source>an empty text in the place of a number</source>
        <translation>ein leerer Text anstelle einer Zahl</translation>
    </message>
    <message>
        <source>an empty text in the place of a date</source>
        <translation>ein leerer Text anstelle eines Datums</translation>
    </message>
    <message>
        <source>a number that is written as a text</source>
        <translation>eine Zahl, die als Text geschrieben ist</translation>
    </message>
    <message>
        <source>a date that is written as a text</source>
        <translation>ein Datum, das als Text geschrieben ist</translation>
    </message>
    <message>
        <source>Yes or No that is written as a text</source>
        <translation>Ja oder Nein, das als Text geschrieben ist</translation>
    </message>
    <message>
        <source>Yes or No that is written as a number in a text</source>
        <translation>Ja oder Nein, das als Zahl in einem Text geschrieben ist</translation>
    </message>
    <message>
        <source>any number but 0 is Yes</source>
        <translation>jede Zahl außer 0 ist Ja</translation>
    </message>
    <message>
        <source>Yes and No have no Null</source>
        <translation>Ja und Nein haben kein Null</translation>
    </message>
    <message>
        <source>it is no date of the years 100 to 9999</source>
        <translation>es ist kein Datum der Jahre 100 bis 9999</translation>
    </message>
    <message>
        <source>a part of a second, which is rounded</source>
        <translation>ein Teil einer Sekunde, der gerundet wird</translation>
    </message>
    <message>
        <source>half a character, in the place of which U+FFFD stands</source>
        <translation>ein halbes Zeichen, an dessen Stelle U+FFFD steht</translation>
    </message>
    <message>
        <source>the character U+0000, in the place of which U+FFFD stands</source>
        <translation>das Zeichen U+0000, an dessen Stelle U+FFFD steht</translation>
    </message>
    <message>
        <source>it has characters that steer a display instead of being shown</source>
        <translation>es hat Zeichen, die eine Anzeige steuern, statt gezeigt zu werden</translation>
    </message>
    <message>
        <source>it has %1 bytes, and a cell of an import file %2 at most</source>
        <translation>es hat %1 Bytes, und ein Feld einer Importdatei höchstens %2</translation>
    </message>
    <message>
        <source>the column takes texts: it is written as one</source>
        <translation>die Spalte nimmt Texte: es wird als einer geschrieben</translation>
    </message>
    <message>
        <source>a text among numbers, as a merge of directory codes writes it</source>
        <translation>ein Text unter Zahlen, wie ihn ein Abgleich von Rufcodes schreibt</translation>
    </message>
    <message>
        <source>it is %1, and the column takes %2</source>
        <translation>es ist %1, und die Spalte nimmt %2</translation>
    </message>
    <message>
        <source>a date</source>
        <translation>ein Datum</translation>
    </message>
    <message>
        <source>no date</source>
        <translation>kein Datum</translation>
    </message>
    <message>
        <source>of another kind</source>
        <translation>von anderer Art</translation>
    </message>
    <message>
        <source>numbers</source>
        <translation>Zahlen</translation>
    </message>
    <message>
        <source>Yes or No</source>
        <translation>Ja oder Nein</translation>
    </message>
    <message>
        <source>dates</source>
        <translation>Daten mit Tag und Uhrzeit</translation>
    </message>
    <message>
        <source>texts</source>
        <translation>Texte</translation>
    </message>
    <message>
        <source>an identity is a number from 1 on</source>
        <translation>eine Kennung ist eine Zahl ab 1</translation>
    </message>
    <message>
        <source>an identity is a number from 1 on, and nothing refers to it</source>
        <translation>eine Kennung ist eine Zahl ab 1, und nichts verweist auf sie</translation>
    </message>
    <message>
        <source>a row before it has the identity</source>
        <translation>eine frühere Zeile hat die Kennung</translation>
    </message>
    <message>
        <source>a row before it has the identity, to which nothing refers</source>
        <translation>eine frühere Zeile hat die Kennung, auf die nichts verweist</translation>
    </message>
    <message>
        <source>it has no number</source>
        <translation>es fehlt die Nummer</translation>
    </message>
    <message>
        <source>a row before it has the number at the same unit</source>
        <translation>eine frühere Zeile derselben Anlage hat die Nummer</translation>
    </message>
    <message>
        <source>doors are numbered anew in their order, for the program counts them from 1</source>
        <translation>Türen werden ihrer Reihenfolge nach neu nummeriert, denn das Programm zählt sie ab 1</translation>
    </message>
    <message>
        <source>schedules are numbered from 0 on: this one cannot be renamed or deleted</source>
        <translation>Zeitpläne haben Nummern ab 0: Dieser lässt sich weder umbenennen noch löschen</translation>
    </message>
    <message>
        <source>it is the last number there is: who adds a schedule has to name its number</source>
        <translation>es ist die letzte Nummer, die es gibt: Wer einen Zeitplan hinzufügt, muss seine Nummer nennen</translation>
    </message>
    <message>
        <source>the row belongs to no unit</source>
        <translation>die Zeile gehört zu keiner Anlage</translation>
    </message>
    <message>
        <source>there is no such unit</source>
        <translation>diese Anlage gibt es nicht</translation>
    </message>
    <message>
        <source>the field has no name</source>
        <translation>das Berichtsfeld hat keinen Namen</translation>
    </message>
    <message>
        <source>no table has such a column: the report would fail</source>
        <translation>keine Tabelle hat eine solche Spalte: der Bericht würde misslingen</translation>
    </message>
    <message>
        <source>a row before it has the field</source>
        <translation>eine frühere Zeile hat das Berichtsfeld</translation>
    </message>
    <message>
        <source>a field that is not displayed stands behind those that are, or the report shows values in the columns of others</source>
        <translation>ein Berichtsfeld, das nicht angezeigt wird, steht hinter denen, die es werden, sonst zeigt der Bericht Werte in den Spalten anderer</translation>
    </message>
    <message>
        <source>a width is 0 or more, and the report would fail: the column has the usual one</source>
        <translation>eine Breite ist 0 oder größer, und der Bericht würde misslingen: die Spalte hat die übliche</translation>
    </message>
    <message>
        <source>the unit has no key</source>
        <translation>die Anlage hat keinen Schlüssel</translation>
    </message>
    <message>
        <source>a unit before it has the key</source>
        <translation>eine frühere Anlage hat den Schlüssel</translation>
    </message>
    <message>
        <source>the type has no name</source>
        <translation>der Typ hat keinen Namen</translation>
    </message>
    <message>
        <source>a type before it has the name, for letter case does not count</source>
        <translation>ein früherer Typ hat den Namen, denn Groß- und Kleinschreibung zählt nicht</translation>
    </message>
    <message>
        <source>nothing can be added to units of this type</source>
        <translation>Anlagen dieses Typs kann nichts hinzugefügt werden</translation>
    </message>
    <message>
        <source>there is no capacity: %1</source>
        <translation>die Kapazität fehlt: %1</translation>
    </message>
    <message>
        <source>a number as it is read, where Base64 of one is kept</source>
        <translation>eine Zahl, wie man sie liest, wo sie als Base64 gespeichert wird</translation>
    </message>
    <message>
        <source>it is neither Base64 of a number nor a number: %1</source>
        <translation>es ist weder Base64 einer Zahl noch eine Zahl: %1</translation>
    </message>
    <message>
        <source>%1 codes, where 1 to %2 can be: %3</source>
        <translation>%1 Codes, wo 1 bis %2 möglich sind: %3</translation>
    </message>
    <message>
        <source>%1 to %2 can be: &apos;units edit %3 %4&apos; mends it</source>
        <translation>%1 bis %2 sind möglich: „units edit %3 %4“ behebt es</translation>
    </message>
    <message>
        <source>a row before it has the settings of the unit</source>
        <translation>eine frühere Zeile hat die Einstellungen der Anlage</translation>
    </message>
    <message>
        <source>there is no such type: nothing can be added to the unit before &apos;units edit %1 --type TYPE&apos; gives it another one</source>
        <translation>diesen Typ gibt es nicht: der Anlage kann nichts hinzugefügt werden, bevor „units edit %1 --type TYPE“ ihr einen anderen gibt</translation>
    </message>
    <message>
        <source>0, 1 and 2 have a meaning: new periods have no end by default</source>
        <translation>0, 1 und 2 haben eine Bedeutung: neue Zeiträume haben üblicherweise kein Ende</translation>
    </message>
    <message>
        <source>the unit has no settings: nothing can be added to it before &apos;units edit %1 --type TYPE&apos; gives it some</source>
        <translation>die Anlage hat keine Einstellungen: ihr kann nichts hinzugefügt werden, bevor „units edit %1 --type TYPE“ ihr welche gibt</translation>
    </message>
    <message>
        <source>the unit has %1 codes and takes %2: nothing can be added to it</source>
        <translation>die Anlage hat %1 Codes und nimmt %2: ihr kann nichts hinzugefügt werden</translation>
    </message>
    <message>
        <source>a group before it is the unit&apos;s group zero: it is an ordinary one</source>
        <translation>eine frühere Gruppe ist die Gruppe null der Anlage: diese ist eine gewöhnliche</translation>
    </message>
    <message>
        <source>no group of the unit is its group zero: its new tenants have group 0</source>
        <translation>keine Gruppe der Anlage ist ihre Gruppe null: ihre neuen Mieter haben die Gruppe 0</translation>
    </message>
    <message>
        <source>the unit has %1 door: the card cannot be edited before it has one of them, or 0 for none</source>
        <translation>die Anlage hat %1 Tür: die Karte kann erst geändert werden, wenn sie diese hat, oder 0 für keine</translation>
    </message>
    <message>
        <source>the unit has %1 doors: the card cannot be edited before it has one of them, or 0 for none</source>
        <translation>die Anlage hat %1 Türen: die Karte kann erst geändert werden, wenn sie eine davon hat, oder 0 für keine</translation>
    </message>
    <message>
        <source>the credential has no type</source>
        <translation>der Ausweis hat keinen Typ</translation>
    </message>
    <message>
        <source>a type that is not known: lists have it at their end</source>
        <translation>ein Typ, der nicht bekannt ist: in Listen steht er am Ende</translation>
    </message>
    <message>
        <source>the credential has no number</source>
        <translation>der Ausweis hat keine Nummer</translation>
    </message>
    <message>
        <source>credentials are numbered from 1 to %1</source>
        <translation>Ausweise haben Nummern von 1 bis %1</translation>
    </message>
    <message>
        <source>%1 to %2 are for this type</source>
        <translation>%1 bis %2 sind bei diesem Typ möglich</translation>
    </message>
    <message>
        <source>a transmitter has the buttons 1 and 4</source>
        <translation>ein Sender hat die Tasten 1 und 4</translation>
    </message>
    <message>
        <source>a row before it is the same credential of the unit</source>
        <translation>eine frühere Zeile ist derselbe Ausweis der Anlage</translation>
    </message>
    <message>
        <source>there is no code</source>
        <translation>es fehlt der Rufcode</translation>
    </message>
    <message>
        <source>a code has 1 to %1 digits and no fraction</source>
        <translation>ein Rufcode hat 1 bis %1 Ziffern und keine Stellen hinter dem Komma</translation>
    </message>
    <message>
        <source>a row before it has the code at the same unit</source>
        <translation>eine frühere Zeile derselben Anlage hat den Rufcode</translation>
    </message>
    <message>
        <source>a row before it has the code, and one of them is deleted</source>
        <translation>eine frühere Zeile hat den Rufcode, und eine von beiden ist gelöscht</translation>
    </message>
    <message>
        <source>below 0 there is -1 alone, for no code: it is in no list and no report</source>
        <translation>unter 0 gibt es nur -1, für keinen Rufcode: er steht in keiner Liste und keinem Bericht</translation>
    </message>
    <message>
        <source>it has more digits than the %1 of the unit&apos;s codes</source>
        <translation>er hat mehr als die %1 Ziffern der Rufcodes der Anlage</translation>
    </message>
    <message>
        <source>there is no phone number to be called</source>
        <translation>es fehlt die Telefonnummer, die angerufen wird</translation>
    </message>
    <message>
        <source>Call Forwarding is on, and there is no phone number to forward to</source>
        <translation>die Rufweiterleitung ist an, und es fehlt die Telefonnummer, zu der weitergeleitet wird</translation>
    </message>
    <message>
        <source>the unit has no such schedule</source>
        <translation>die Anlage hat keinen solchen Zeitplan</translation>
    </message>
    <message>
        <source>%1 is on, without a schedule</source>
        <translation>%1 ist an, ohne einen Zeitplan</translation>
    </message>
    <message>
        <source>a delay is 0 or more: no entry takes this one, and no unit&apos;s file holds it</source>
        <translation>eine Wartezeit ist 0 oder größer: keine Eingabe nimmt diese, und keine Datei einer Anlage enthält sie</translation>
    </message>
    <message>
        <source>the period ends before it begins</source>
        <translation>der Zeitraum endet, bevor er beginnt</translation>
    </message>
    <message>
        <source>the period begins and ends in one minute</source>
        <translation>der Zeitraum beginnt und endet in einer Minute</translation>
    </message>
    <message>
        <source>0 to 3 have a meaning: it counts as changed since the unit had it</source>
        <translation>0 bis 3 haben eine Bedeutung: er gilt als geändert, seit die Anlage ihn hat</translation>
    </message>
    <message>
        <source>the name is nothing but blanks</source>
        <translation>der Name besteht nur aus Leerzeichen</translation>
    </message>
    <message>
        <source>the unit has no such group: the tenant is in the one of new tenants</source>
        <translation>die Anlage hat keine solche Gruppe: der Mieter ist in der für neue Mieter</translation>
    </message>
    <message>
        <source>the tenant with RID %1 has the link code, too</source>
        <translation>auch der Mieter mit RID %1 hat den Verknüpfungscode</translation>
    </message>
    <message>
        <source>the unit has no such schedule: the door stays closed to the tenant</source>
        <translation>die Anlage hat keinen solchen Zeitplan: die Tür bleibt dem Mieter verschlossen</translation>
    </message>
    <message>
        <source>there is no such credential, or its row was refused</source>
        <translation>diesen Ausweis gibt es nicht, oder seine Zeile wurde abgelehnt</translation>
    </message>
    <message>
        <source>the credential is one of unit %1</source>
        <translation>der Ausweis gehört zur Anlage %1</translation>
    </message>
    <message>
        <source>the tenant has the credential in the first place already</source>
        <translation>der Mieter hat den Ausweis schon an erster Stelle</translation>
    </message>
    <message>
        <source>the tenant with RID %1 holds the credential, too</source>
        <translation>auch der Mieter mit RID %1 hat den Ausweis</translation>
    </message>
    <message>
        <source>the unit has no such directory code, or its row was refused</source>
        <translation>die Anlage hat keinen solchen Rufcode, oder seine Zeile wurde abgelehnt</translation>
    </message>
    <message>
        <source>a tenant&apos;s id is its RID, and what refers to the id follows it</source>
        <translation>die Nummer eines Mieters ist seine RID, und was auf die Nummer verweist, folgt ihr</translation>
    </message>
    <message>
        <source>the row belongs to no tenant</source>
        <translation>die Zeile gehört zu keinem Mieter</translation>
    </message>
    <message>
        <source>the unit has no such tenant, or its row was refused</source>
        <translation>die Anlage hat keinen solchen Mieter, oder seine Zeile wurde abgelehnt</translation>
    </message>
    <message>
        <source>a row before it belongs to the tenant</source>
        <translation>eine frühere Zeile gehört zu dem Mieter</translation>
    </message>
    <message>
        <source>it follows its tenant, whose id is the RID now</source>
        <translation>sie folgt ihrem Mieter, dessen Nummer jetzt die RID ist</translation>
    </message>
    <message>
        <source>%1 more, which the report alone lists</source>
        <translation>%1 weitere, die nur der Bericht aufführt</translation>
    </message>
    <message>
        <source>the file does not have this table: %1</source>
        <translation>die Datei hat diese Tabelle nicht: %1</translation>
    </message>
    <message>
        <source>the file does not have this column: %1</source>
        <translation>die Datei hat diese Spalte nicht: %1</translation>
    </message>
    <message>
        <source>a store does not have this table: it is a link to another file</source>
        <translation>ein Bestand hat diese Tabelle nicht: Sie ist eine Verknüpfung mit einer anderen Datei</translation>
    </message>
    <message>
        <source>a store does not have this table: %1 row is left</source>
        <translation>ein Bestand hat diese Tabelle nicht: %1 Zeile wird nicht übernommen</translation>
    </message>
    <message>
        <source>a store does not have this table: %1 rows are left</source>
        <translation>ein Bestand hat diese Tabelle nicht: %1 Zeilen werden nicht übernommen</translation>
    </message>
    <message>
        <source>a store does not have this column</source>
        <translation>ein Bestand hat diese Spalte nicht</translation>
    </message>
    <message>
        <source>there is nothing to bring in without units</source>
        <translation>ohne Anlagen gibt es nichts zu übernehmen</translation>
    </message>
    <message>
        <source>how many codes a unit takes is not known, and nothing can be added to one</source>
        <translation>wie viele Codes eine Anlage nimmt, ist nicht bekannt, und keiner kann etwas hinzugefügt werden</translation>
    </message>
    <message>
        <source>the units have no settings</source>
        <translation>die Anlagen haben keine Einstellungen</translation>
    </message>
    <message>
        <source>the units have no doors</source>
        <translation>die Anlagen haben keine Türen</translation>
    </message>
    <message>
        <source>the units have the two fixed schedules alone</source>
        <translation>die Anlagen haben nur die zwei festen Zeitpläne</translation>
    </message>
    <message>
        <source>the units have no groups, and their tenants group 0</source>
        <translation>die Anlagen haben keine Gruppen, und ihre Mieter die Gruppe 0</translation>
    </message>
    <message>
        <source>there are no credentials</source>
        <translation>es gibt keine Ausweise</translation>
    </message>
    <message>
        <source>there are no directory codes</source>
        <translation>es gibt keine Rufcodes</translation>
    </message>
    <message>
        <source>there are no tenants</source>
        <translation>es gibt keine Mieter</translation>
    </message>
    <message>
        <source>nothing is noted of tenants that were made with their credentials</source>
        <translation>von Mietern, die mit ihren Ausweisen angelegt wurden, ist nichts vermerkt</translation>
    </message>
    <message>
        <source>the directory-code report has the fields of a new store</source>
        <translation>der Bericht über Rufcodes hat die Felder eines neuen Bestands</translation>
    </message>
    <message>
        <source>TenantID is taken for it</source>
        <translation>an ihrer Stelle wird TenantID genommen</translation>
    </message>
    <message>
        <source>the rows get numbers of their own</source>
        <translation>die Zeilen bekommen eigene Nummern</translation>
    </message>
    <message>
        <source>a tenant&apos;s is its RID</source>
        <translation>die eines Mieters ist seine RID</translation>
    </message>
    <message>
        <source>No in every row</source>
        <translation>in jeder Zeile Nein</translation>
    </message>
    <message>
        <source>empty in every row</source>
        <translation>in jeder Zeile leer</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has only a link to the table &apos;%2&apos;, whose rows stand in another file: name that file</source>
        <translation>„%1“ hat nur eine Verknüpfung mit der Tabelle „%2“, deren Zeilen in einer anderen Datei stehen: diese Datei wählen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is a database of another application: it has none of the tables of units, credentials and tenants. Name another file</source>
        <translation>„%1“ ist eine Datenbank einer anderen Anwendung: sie hat keine der Tabellen von Anlagen, Ausweisen und Mietern. Eine andere Datei wählen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no table &apos;Units&apos;: %2. Name another file</source>
        <translation>„%1“ hat keine Tabelle „Units“: %2. Eine andere Datei wählen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has the table &apos;%2&apos; twice, for letter case does not count: name another file</source>
        <translation>„%1“ hat die Tabelle „%2“ zweimal, denn Groß- und Kleinschreibung zählt nicht: eine andere Datei wählen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has the column &apos;%2&apos; of the table &apos;%3&apos; twice, for letter case does not count: name another file</source>
        <translation>„%1“ hat die Spalte „%2“ der Tabelle „%3“ zweimal, denn Groß- und Kleinschreibung zählt nicht: eine andere Datei wählen</translation>
    </message>
    <message>
        <source>the table &apos;%1&apos; of &apos;%2&apos; has no column &apos;%3&apos;, without which its rows mean nothing: name another file</source>
        <translation>die Tabelle „%1“ von „%2“ hat keine Spalte „%3“, ohne die ihre Zeilen nichts bedeuten: eine andere Datei wählen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was not read within %2 s of processor time: it is damaged or too large</source>
        <translation>„%1“ wurde nicht in %2 s Rechenzeit gelesen: die Datei ist beschädigt oder zu groß</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was not read within %2 s: it is damaged or too large</source>
        <translation>„%1“ wurde nicht in %2 s gelesen: die Datei ist beschädigt oder zu groß</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was not read within %2 MB of memory: it is damaged or too large</source>
        <translation>„%1“ wurde nicht in %2 MB Speicher gelesen: die Datei ist beschädigt oder zu groß</translation>
    </message>
    <message>
        <source>have the program that it comes from repair it, or take an older copy</source>
        <translation>sie mit dem Programm reparieren, von dem sie stammt, oder eine ältere Kopie nehmen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is damaged: it cannot be read; %2</source>
        <translation>„%1“ ist beschädigt und nicht lesbar: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is damaged: the list of its tables cannot be read; %2</source>
        <translation>„%1“ ist beschädigt, die Liste der Tabellen ist nicht lesbar: %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is damaged: the definition of its table &apos;%2&apos; cannot be read; %3</source>
        <translation>„%1“ ist beschädigt, die Beschreibung der Tabelle „%2“ ist nicht lesbar: %3</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is damaged: a row of its table &apos;%2&apos; cannot be read; %3</source>
        <translation>„%1“ ist beschädigt, eine Zeile der Tabelle „%2“ ist nicht lesbar: %3</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is damaged: a long text of its table &apos;%2&apos; is not all there; %3</source>
        <translation>„%1“ ist beschädigt, ein langer Text der Tabelle „%2“ ist nicht ganz da: %3</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is damaged: its table &apos;%2&apos; says that it has %3 rows, and %4 can be read; %5</source>
        <translation>„%1“ ist beschädigt, die Tabelle „%2“ sagt, dass sie %3 Zeilen hat, und lesbar sind %4: %5</translation>
    </message>
    <message>
        <source>more</source>
        <translation>mehr</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is empty: name another file</source>
        <translation>„%1“ ist leer: eine andere Datei wählen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no desktop database (.mdb, .accdb): name another file</source>
        <translation>„%1“ ist keine Desktop-Datenbank (.mdb, .accdb): eine andere Datei wählen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is a desktop database of a format that is not known: save it as an .mdb or .accdb of another version</source>
        <translation>„%1“ ist eine Desktop-Datenbank in einem unbekannten Format: sie als .mdb oder .accdb einer anderen Version speichern</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is cut off: it ends within a page. Copy it again from where it comes from</source>
        <translation>„%1“ ist abgeschnitten und endet mitten in einer Seite. Die Datei noch einmal von ihrem Ursprung kopieren</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has a password: open it in the program that it comes from, take the password away in a copy, and name that</source>
        <translation>„%1“ hat ein Kennwort: die Datei in dem Programm öffnen, von dem sie stammt, das Kennwort in einer Kopie entfernen und diese wählen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has %2 MB, and a desktop database has %3 MB at most: name another file</source>
        <translation>„%1“ hat %2 MB, und eine Desktop-Datenbank hat höchstens %3 MB: eine andere Datei wählen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was written while it was read: close the program that has it open, then try again</source>
        <translation>„%1“ wurde beim Lesen geschrieben: das Programm schließen, das die Datei offen hat, und es noch einmal versuchen</translation>
    </message>
    <message>
        <source>cannot start the program that reads such files: %1</source>
        <translation>das Programm, das solche Dateien liest, kann nicht gestartet werden: %1</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not there, which reads such files: build it where libmdb is installed (Debian: mdbtools-dev)</source>
        <translation>„%1“, das solche Dateien liest, ist nicht da: es wird dort gebaut, wo libmdb installiert ist (Debian: mdbtools-dev)</translation>
    </message>
    <message>
        <source>it is a text, and the column takes numbers in digits</source>
        <translation>es ist ein Text, und die Spalte nimmt Zahlen in Ziffern</translation>
    </message>
    <message>
        <source>it is a text, and the column takes Yes or No</source>
        <translation>es ist ein Text, und die Spalte nimmt Ja oder Nein</translation>
    </message>
    <message>
        <source>it is a text, and the column takes dates</source>
        <translation>es ist ein Text, und die Spalte nimmt Daten mit Tag und Uhrzeit</translation>
    </message>
    <message>
        <source>someone else has changed the door meanwhile</source>
        <translation>jemand anderes hat die Tür inzwischen geändert</translation>
    </message>
    <message>
        <source>someone else has changed the schedule meanwhile</source>
        <translation>jemand anderes hat den Zeitplan inzwischen geändert</translation>
    </message>
    <message>
        <source>someone else has deleted the unit meanwhile</source>
        <translation>jemand anderes hat die Anlage inzwischen gelöscht</translation>
    </message>
    <message>
        <source>someone else has deleted the door meanwhile</source>
        <translation>jemand anderes hat die Tür inzwischen gelöscht</translation>
    </message>
    <message>
        <source>someone else has deleted the schedule meanwhile</source>
        <translation>jemand anderes hat den Zeitplan inzwischen gelöscht</translation>
    </message>
    <message>
        <source>it is the last identity there is: no row can be added</source>
        <translation>es ist die letzte Kennung, die es gibt: keine Zeile kann hinzukommen</translation>
    </message>
    <message>
        <source>it is the last link code there is: no tenant can be added to the unit</source>
        <translation>es ist der letzte Verknüpfungscode, den es gibt: kein Mieter kann zur Anlage hinzukommen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; holds more than the %2 MB that are read of one file: delete what nobody needs any more in a copy, and name that</source>
        <translation>„%1“ enthält mehr als die %2 MB, die aus einer Datei gelesen werden: in einer Kopie löschen, was niemand mehr braucht, und diese nennen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has a text of more than %2 MB in its table &apos;%3&apos;: shorten it in a copy, and name that</source>
        <translation>„%1“ hat einen Text von mehr als %2 MB in ihrer Tabelle „%3“: ihn in einer Kopie kürzen und diese nennen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has its texts in Unicode: name no code page, which would change nothing</source>
        <translation>„%1“ hat ihre Texte in Unicode: keine Codepage nennen, sie würde nichts ändern</translation>
    </message>
    <message>
        <source>The server tells of a changed row in other words than the store&apos;s own: nothing was stored; ask its administrator who has altered the store&apos;s triggers</source>
        <translation>Der Server meldet eine geänderte Zeile mit anderen Worten als denen des Bestands: es wurde nichts gespeichert; seinen Administrator fragen, wer die Trigger des Bestands geändert hat</translation>
    </message>
    <message>
        <source>The changes could not be written down for the audit: nothing was stored</source>
        <translation>Die Änderungen konnten für den Verlauf nicht festgehalten werden: es wurde nichts gespeichert</translation>
    </message>
    <message>
        <source>The connection to the server was lost while it was to store: nothing was stored; try again</source>
        <translation>Die Verbindung zum Server ging verloren, als er speichern sollte: es wurde nichts gespeichert; noch einmal versuchen</translation>
    </message>
    <message>
        <source>The transaction had failed before its end: nothing was stored</source>
        <translation>Die Transaktion war vor ihrem Ende gescheitert: es wurde nichts gespeichert</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos;: its server does not answer, and was not waited for any longer</source>
        <translation>Der Bestand „%1“: sein Server antwortet nicht, und es wurde nicht länger auf ihn gewartet</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos;: another program is writing to the store: nothing was changed; let it finish, then try again</source>
        <translation>Der Bestand „%1“: ein anderes Programm schreibt in den Bestand: es wurde nichts geändert; es beenden lassen und noch einmal versuchen</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos; cannot be opened: its server is older than PostgreSQL 15</source>
        <translation>Der Bestand „%1“ kann nicht geöffnet werden: sein Server ist älter als PostgreSQL 15</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos; cannot be opened: the database keeps its texts in another encoding than UTF-8: create it with ENCODING &apos;UTF8&apos;</source>
        <translation>Der Bestand „%1“ kann nicht geöffnet werden: die Datenbank hält ihre Texte in einer anderen Kodierung als UTF-8: sie mit ENCODING &apos;UTF8&apos; anlegen</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos; cannot be opened: permission denied for schema qorhost, which belongs to &apos;%2&apos; (no role of operators has rights on it: let the owner name one with &apos;init --rights-only --operators ROLE&apos;)</source>
        <translation>Der Bestand „%1“ kann nicht geöffnet werden: kein Recht am Schema qorhost, das „%2“ gehört (keine Rolle für Bediener hat Rechte daran: den Eigentümer eine nennen lassen, mit „init --rights-only --operators ROLLE“)</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos; cannot be opened: permission denied for schema qorhost, which belongs to &apos;%2&apos; (ask the server&apos;s administrator for %3)</source>
        <translation>Der Bestand „%1“ kann nicht geöffnet werden: kein Recht am Schema qorhost, das „%2“ gehört (den Administrator des Servers bitten um %3)</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos; is of an earlier version of this program, and is brought up to date by its owner: let a member of the role &apos;%2&apos; open it once</source>
        <translation>Der Bestand „%1“ ist von einer früheren Version dieses Programms, und sein Eigentümer bringt ihn auf den neuen Stand: ein Mitglied der Rolle „%2“ ihn einmal öffnen lassen</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos; cannot be opened: %2 (%3)</source>
        <translation>Der Bestand „%1“ kann nicht geöffnet werden: %2 (%3)</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos; cannot be opened: %2</source>
        <translation>Der Bestand „%1“ kann nicht geöffnet werden: %2</translation>
    </message>
    <message>
        <source>There is no store in &apos;%1&apos;: create it first</source>
        <translation>In „%1“ gibt es keinen Bestand: ihn zuerst anlegen</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is in a form that no version of this program has written (schema %2)</source>
        <translation>„%1“ hat eine Form, die keine Version dieses Programms geschrieben hat (Schema %2)</translation>
    </message>
    <message>
        <source>The store&apos;s name cannot be read: write postgresql://HOST/DATABASE, or service=NAME</source>
        <translation>Der Name des Bestands ist nicht zu lesen: postgresql://RECHNER/DATENBANK schreiben, oder service=NAME</translation>
    </message>
    <message>
        <source>The store&apos;s name holds a password, which other programs of the machine could read: leave it out and put it into the file ~/.pgpass, or PGPASSWORD into the environment</source>
        <translation>Der Name des Bestands enthält ein Passwort, das andere Programme des Rechners lesen könnten: es weglassen und in die Datei ~/.pgpass schreiben, oder PGPASSWORD in die Umgebung</translation>
    </message>
    <message>
        <source>Stores on a server need %1 (Debian: libpq5), which cannot be loaded</source>
        <translation>Bestände auf einem Server brauchen %1 (Debian: libpq5), und das kann nicht geladen werden</translation>
    </message>
    <message>
        <source>The statement failed: it worked for too long and was ended (%1)</source>
        <translation>Die Anweisung ist fehlgeschlagen: sie hat zu lange gearbeitet und wurde beendet (%1)</translation>
    </message>
    <message>
        <source>the server cannot be reached: check its address, the network and whether it runs</source>
        <translation>der Server ist nicht zu erreichen: seine Adresse und das Netz prüfen, und ob er läuft</translation>
    </message>
    <message>
        <source>it may be starting: try again</source>
        <translation>vielleicht startet er gerade: noch einmal versuchen</translation>
    </message>
    <message>
        <source>put it into the file ~/.pgpass, which nobody else may read, as HOST:PORT:DATABASE:USER:PASSWORD, or PGPASSWORD into the environment</source>
        <translation>es in die Datei ~/.pgpass schreiben, die niemand sonst lesen darf, als RECHNER:PORT:DATENBANK:BENUTZER:PASSWORT, oder PGPASSWORD in die Umgebung</translation>
    </message>
    <message>
        <source>the server does not let this user do it: ask its administrator</source>
        <translation>der Server lässt das diesen Benutzer nicht tun: seinen Administrator fragen</translation>
    </message>
    <message>
        <source>the server, or this connection, takes no changes: ask its administrator</source>
        <translation>der Server, oder diese Verbindung, nimmt keine Änderungen an: seinen Administrator fragen</translation>
    </message>
    <message>
        <source>the server&apos;s disk is full: its administrator has to make room</source>
        <translation>der Datenträger des Servers ist voll: sein Administrator muss Platz schaffen</translation>
    </message>
    <message>
        <source>the server cannot read or write its disk: tell its administrator</source>
        <translation>der Server kann seinen Datenträger nicht lesen oder nicht beschreiben: es seinem Administrator sagen</translation>
    </message>
    <message>
        <source>there is no such database on the server: check its name</source>
        <translation>auf dem Server gibt es keine solche Datenbank: ihren Namen prüfen</translation>
    </message>
    <message>
        <source>the database is damaged: tell the server&apos;s administrator</source>
        <translation>die Datenbank ist beschädigt: es dem Administrator des Servers sagen</translation>
    </message>
    <message>
        <source>the server has not enough memory: tell its administrator</source>
        <translation>der Server hat nicht genug Speicher: es seinem Administrator sagen</translation>
    </message>
    <message>
        <source>the statement or one of its values is too long: use a shorter one</source>
        <translation>die Anweisung oder einer ihrer Werte ist zu lang: kürzer fassen</translation>
    </message>
    <message>
        <source>the row belongs to a unit that does not exist, or is a unit that other rows belong to</source>
        <translation>die Zeile gehört zu einer Anlage, die es nicht gibt, oder ist eine Anlage, zu der andere Zeilen gehören</translation>
    </message>
    <message>
        <source>The connection to the server was lost while it was to store: %1</source>
        <translation>Die Verbindung zum Server ging verloren, als er speichern sollte: %1</translation>
    </message>
    <message>
        <source>it is not known whether it was stored: look at the history (qorhost history list) before you do it again</source>
        <translation>ob gespeichert wurde, ist nicht bekannt: im Verlauf nachsehen (qorhost history list), bevor es noch einmal getan wird</translation>
    </message>
    <message>
        <source>The statement failed: %1 (the connection to the server was lost: nothing was stored; try again)</source>
        <translation>Die Anweisung ist fehlgeschlagen: %1 (die Verbindung zum Server ging verloren: es wurde nichts gespeichert; noch einmal versuchen)</translation>
    </message>
    <message>
        <source>the server ended it before it was done: try again, or ask its administrator how long a statement may work</source>
        <translation>der Server hat es beendet, bevor es getan war: noch einmal versuchen, oder seinen Administrator fragen, wie lange eine Anweisung arbeiten darf</translation>
    </message>
    <message>
        <source>The store &apos;%1&apos; was brought up to date by a newer version of this program while it was open: nothing was stored; use that version</source>
        <translation>Der Bestand „%1“ wurde von einer neueren Version dieses Programms auf den neuen Stand gebracht, während er offen war: es wurde nichts gespeichert; jene Version verwenden</translation>
    </message>
</context>
<context>
    <name>DirCodePage</name>
    <message>
        <source>&amp;Find:</source>
        <translation>&amp;Suchen:</translation>
    </message>
    <message>
        <source>Directory &amp;codes:</source>
        <translation>&amp;Rufcodes:</translation>
    </message>
    <message>
        <source>Directory codes</source>
        <translation>Rufcodes</translation>
    </message>
    <message>
        <source>New directory code</source>
        <translation>Neuer Rufcode</translation>
    </message>
    <message>
        <source>Directory code</source>
        <translation>Rufcode</translation>
    </message>
    <message>
        <source>C&amp;ode:</source>
        <translation>C&amp;ode:</translation>
    </message>
    <message>
        <source>Sho&amp;w the code</source>
        <translation>Code &amp;anzeigen</translation>
    </message>
    <message>
        <source>Display n&amp;ame:</source>
        <translation>Anzei&amp;gename:</translation>
    </message>
    <message>
        <source>Show &amp;the name</source>
        <translation>Name&amp;n anzeigen</translation>
    </message>
    <message>
        <source>Call</source>
        <translation>Anruf</translation>
    </message>
    <message>
        <source>&amp;Phone:</source>
        <translation>&amp;Telefon:</translation>
    </message>
    <message>
        <source>E&amp;xtension:</source>
        <translation>&amp;Durchwahl:</translation>
    </message>
    <message>
        <source>after</source>
        <translation>nach</translation>
    </message>
    <message>
        <source> s</source>
        <translation> s</translation>
    </message>
    <message>
        <source>Delay before the extension</source>
        <translation>Verzögerung vor der Durchwahl</translation>
    </message>
    <message>
        <source>Do not dist&amp;urb:</source>
        <translation>N&amp;icht stören:</translation>
    </message>
    <message>
        <source>Do-not-disturb schedule</source>
        <translation>Zeitplan für „Nicht stören“</translation>
    </message>
    <message>
        <source>Call forwarding</source>
        <translation>Rufweiterleitung</translation>
    </message>
    <message>
        <source>Fo&amp;rward calls:</source>
        <translation>&amp;Weiterleiten:</translation>
    </message>
    <message>
        <source>Call forwarding schedule</source>
        <translation>Zeitplan der Rufweiterleitung</translation>
    </message>
    <message>
        <source>To p&amp;hone:</source>
        <translation>An Tele&amp;fon:</translation>
    </message>
    <message>
        <source>&amp;Extension:</source>
        <translation>Durchwah&amp;l:</translation>
    </message>
    <message>
        <source>Delay before the forwarding extension</source>
        <translation>Verzögerung vor der Durchwahl der Weiterleitung</translation>
    </message>
    <message>
        <source>Active period</source>
        <translation>Gültigkeit</translation>
    </message>
    <message>
        <source>Acti&amp;ve</source>
        <translation>A&amp;ktiv</translation>
    </message>
    <message>
        <source>F&amp;irst day:</source>
        <translation>&amp;Erster Tag:</translation>
    </message>
    <message>
        <source>First day</source>
        <translation>Erster Tag</translation>
    </message>
    <message>
        <source>&amp;Last day:</source>
        <translation>Let&amp;zter Tag:</translation>
    </message>
    <message>
        <source>Last day</source>
        <translation>Letzter Tag</translation>
    </message>
    <message>
        <source>Tenants with this code</source>
        <translation>Mieter mit diesem Code</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>S&amp;peichern</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>Ne&amp;u</translation>
    </message>
    <message>
        <source>Renum&amp;ber…</source>
        <translation>U&amp;mnummerieren…</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>Lös&amp;chen</translation>
    </message>
    <message>
        <source>A part of a code</source>
        <translation>Teil eines Codes</translation>
    </message>
</context>
<context>
    <name>FileChoice</name>
    <message>
        <source>Stores (*.db);;All files (*)</source>
        <translation>Bestände (*.db);;Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>HistoryPage</name>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>&amp;Find:</source>
        <translation>&amp;Suchen:</translation>
    </message>
    <message>
        <source>Show only entries with this text</source>
        <translation>Nur Einträge mit diesem Text anzeigen</translation>
    </message>
    <message>
        <source>What was done in the unit</source>
        <translation>Was in der Anlage getan wurde</translation>
    </message>
    <message>
        <source>What it made of the &amp;rows:</source>
        <translation>Was er aus den &amp;Zeilen machte:</translation>
    </message>
    <message>
        <source>What the entry made of the rows</source>
        <translation>Was der Eintrag aus den Zeilen machte</translation>
    </message>
    <message>
        <source>&amp;Undo this entry</source>
        <translation>Eintrag &amp;rückgängig machen</translation>
    </message>
</context>
<context>
    <name>Import</name>
    <message>
        <source>Tenants with their cards and codes</source>
        <translation>Mieter mit Karten und Codes</translation>
    </message>
    <message>
        <source>Credentials</source>
        <translation>Ausweise</translation>
    </message>
    <message>
        <source>Directory codes</source>
        <translation>Rufcodes</translation>
    </message>
</context>
<context>
    <name>ImportPage</name>
    <message>
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>W&amp;hat the file holds:</source>
        <translation>&amp;Inhalt der Datei:</translation>
    </message>
    <message>
        <source>Choose a &amp;file…</source>
        <translation>&amp;Datei wählen…</translation>
    </message>
    <message>
        <source>No file is chosen.</source>
        <translation>Keine Datei ist gewählt.</translation>
    </message>
    <message>
        <source>&amp;Encoding:</source>
        <translation>&amp;Kodierung:</translation>
    </message>
    <message>
        <source>&amp;Between cells:</source>
        <translation>&amp;Trennzeichen:</translation>
    </message>
    <message>
        <source>C&amp;olumn of the file:</source>
        <translation>&amp;Spalte der Datei:</translation>
    </message>
    <message>
        <source>s&amp;tands for:</source>
        <translation>b&amp;edeutet:</translation>
    </message>
    <message>
        <source>Tenants that are stored &amp;already:</source>
        <translation>Mieter, die es schon &amp;gibt:</translation>
    </message>
    <message>
        <source>Cards &amp;without a type:</source>
        <translation>Karten &amp;ohne Typ:</translation>
    </message>
    <message>
        <source>and facilit&amp;y code:</source>
        <translation>und Ob&amp;jektcode:</translation>
    </message>
    <message>
        <source>Dates &amp;such as 3/4/2026:</source>
        <translation>D&amp;aten wie 3.4.2026:</translation>
    </message>
    <message>
        <source>Store apostrophes of &amp;display names as ’</source>
        <translation>Apostrophe in An&amp;zeigenamen als ’ speichern</translation>
    </message>
    <message>
        <source>Answer &amp;questions with Yes</source>
        <translation>&amp;Fragen mit Ja beantworten</translation>
    </message>
    <message>
        <source>Fi&amp;nd:</source>
        <translation>S&amp;uchen:</translation>
    </message>
    <message>
        <source>Show only rows with this text</source>
        <translation>Nur Zeilen mit diesem Text anzeigen</translation>
    </message>
    <message>
        <source>&amp;Refused rows only</source>
        <translation>Nur abge&amp;lehnte Zeilen</translation>
    </message>
    <message>
        <source>Next wron&amp;g cell</source>
        <translation>&amp;Nächste falsche Zelle</translation>
    </message>
    <message>
        <source>F8</source>
        <translation>F8</translation>
    </message>
    <message>
        <source>The rows of the file</source>
        <translation>Die Zeilen der Datei</translation>
    </message>
    <message>
        <source>&amp;Leave out rows</source>
        <translation>Zeilen &amp;weglassen</translation>
    </message>
    <message>
        <source>Chec&amp;k</source>
        <translation>&amp;Prüfen</translation>
    </message>
    <message>
        <source>&amp;Import</source>
        <translation>I&amp;mportieren</translation>
    </message>
    <message>
        <source>Take these &amp;meanings</source>
        <translation>&amp;Vorschlag übernehmen</translation>
    </message>
</context>
<context>
    <name>Lists</name>
    <message>
        <source>Directory codes</source>
        <translation>Rufcodes</translation>
    </message>
    <message>
        <source>Tenants</source>
        <translation>Mieter</translation>
    </message>
    <message>
        <source>Schedule</source>
        <translation>Zeitplan</translation>
    </message>
    <message>
        <source>How to mend it</source>
        <translation>Wie es zu beheben ist</translation>
    </message>
    <message>
        <source>What is wrong</source>
        <translation>Was nicht stimmt</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Anlage</translation>
    </message>
    <message>
        <source>Queued</source>
        <translation>Eingereiht</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Row</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Subject</source>
        <translation>Gegenstand</translation>
    </message>
    <message>
        <source>Entry</source>
        <translation>Eintrag</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Who</source>
        <translation>Wer</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>Zeilen</translation>
    </message>
    <message>
        <source>Table</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <source>RID</source>
        <translation>RID</translation>
    </message>
    <message>
        <source>Last RID</source>
        <translation>Letzte RID</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Änderung</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>Feld</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Vorher</translation>
    </message>
    <message>
        <source>After</source>
        <translation>Nachher</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>Last name</source>
        <translation>Nachname</translation>
    </message>
    <message>
        <source>First name</source>
        <translation>Vorname</translation>
    </message>
    <message>
        <source>Initial</source>
        <translation>Initiale</translation>
    </message>
    <message>
        <source>Name at unit</source>
        <translation>Name an der Anlage</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>Aktiv</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Beginn</translation>
    </message>
    <message>
        <source>Schedule 1</source>
        <translation>Zeitplan 1</translation>
    </message>
    <message>
        <source>Schedule 2</source>
        <translation>Zeitplan 2</translation>
    </message>
    <message>
        <source>Schedule 3</source>
        <translation>Zeitplan 3</translation>
    </message>
    <message>
        <source>Schedule 4</source>
        <translation>Zeitplan 4</translation>
    </message>
    <message>
        <source>Card 1</source>
        <translation>Karte 1</translation>
    </message>
    <message>
        <source>Card 2</source>
        <translation>Karte 2</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>Resident</source>
        <translation>Bewohner</translation>
    </message>
    <message>
        <source>Tenant id</source>
        <translation>Kennung des Mieters</translation>
    </message>
    <message>
        <source>Tenant</source>
        <translation>Mieter</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Facility</source>
        <translation>Objektcode</translation>
    </message>
    <message>
        <source>ID code</source>
        <translation>ID-Code</translation>
    </message>
    <message>
        <source>Sequence</source>
        <translation>Sequenz</translation>
    </message>
    <message>
        <source>Button</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>Door</source>
        <translation>Tür</translation>
    </message>
    <message>
        <source>Phone</source>
        <translation>Telefon</translation>
    </message>
    <message>
        <source>Extension</source>
        <translation>Durchwahl</translation>
    </message>
    <message>
        <source>Delay</source>
        <translation>Verzögerung</translation>
    </message>
    <message>
        <source>DND</source>
        <translation>Nicht stören</translation>
    </message>
    <message>
        <source>DND schedule</source>
        <translation>Zeitplan „Nicht stören“</translation>
    </message>
    <message>
        <source>Forwarding</source>
        <translation>Weiterleitung</translation>
    </message>
    <message>
        <source>Forward phone</source>
        <translation>Telefon der Weiterleitung</translation>
    </message>
    <message>
        <source>Forward extension</source>
        <translation>Durchwahl der Weiterleitung</translation>
    </message>
    <message>
        <source>Forward delay</source>
        <translation>Verzögerung der Weiterleitung</translation>
    </message>
    <message>
        <source>Forward schedule</source>
        <translation>Zeitplan der Weiterleitung</translation>
    </message>
    <message>
        <source>Display name</source>
        <translation>Anzeigename</translation>
    </message>
    <message>
        <source>Show name</source>
        <translation>Name angezeigt</translation>
    </message>
    <message>
        <source>Show code</source>
        <translation>Code angezeigt</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Credential Type</source>
        <translation>Ausweistyp</translation>
    </message>
    <message>
        <source>Card Number</source>
        <translation>Kartennummer</translation>
    </message>
    <message>
        <source>Facility Code</source>
        <translation>Objektcode</translation>
    </message>
    <message>
        <source>ID Code</source>
        <translation>ID-Code</translation>
    </message>
    <message>
        <source>Sequence Number</source>
        <translation>Sequenznummer</translation>
    </message>
    <message>
        <source>Button Number</source>
        <translation>Tastennummer</translation>
    </message>
    <message>
        <source>Assigned To</source>
        <translation>Zugeordnet</translation>
    </message>
    <message>
        <source>Tenant RID</source>
        <translation>RID des Mieters</translation>
    </message>
    <message>
        <source>Tenant Name</source>
        <translation>Name des Mieters</translation>
    </message>
    <message>
        <source>Directory Code</source>
        <translation>Rufcode</translation>
    </message>
    <message>
        <source>Phone No.</source>
        <translation>Telefon-Nr.</translation>
    </message>
    <message>
        <source>Phone No. Extension</source>
        <translation>Durchwahl</translation>
    </message>
    <message>
        <source>Phone No. Delay</source>
        <translation>Verzögerung</translation>
    </message>
    <message>
        <source>Display Name</source>
        <translation>Anzeigename</translation>
    </message>
    <message>
        <source>Directory Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Inactive</source>
        <translation>Inaktiv</translation>
    </message>
    <message>
        <source>Directory Start Date</source>
        <translation>Erster Tag</translation>
    </message>
    <message>
        <source>Directory End Date</source>
        <translation>Letzter Tag</translation>
    </message>
    <message>
        <source>Do Not Disturb</source>
        <translation>Nicht stören</translation>
    </message>
    <message>
        <source>DND Schedule</source>
        <translation>Zeitplan „Nicht stören“</translation>
    </message>
    <message>
        <source>Call Forwarding</source>
        <translation>Rufweiterleitung</translation>
    </message>
    <message>
        <source>CF Schedule</source>
        <translation>Zeitplan der Weiterleitung</translation>
    </message>
    <message>
        <source>CF Phone No.</source>
        <translation>Weiterleitung an Tel.</translation>
    </message>
    <message>
        <source>CF Extension</source>
        <translation>Durchwahl der Weiterleitung</translation>
    </message>
    <message>
        <source>CF Time Delay</source>
        <translation>Verzögerung der Weiterleitung</translation>
    </message>
    <message>
        <source>Show Display Name</source>
        <translation>Anzeigename angezeigt</translation>
    </message>
    <message>
        <source>Show Directory Code</source>
        <translation>Rufcode angezeigt</translation>
    </message>
    <message>
        <source>equal</source>
        <translation>gleich</translation>
    </message>
    <message>
        <source>does not equal</source>
        <translation>ungleich</translation>
    </message>
    <message>
        <source>begins with</source>
        <translation>beginnt mit</translation>
    </message>
    <message>
        <source>does not begin with</source>
        <translation>beginnt nicht mit</translation>
    </message>
    <message>
        <source>ends with</source>
        <translation>endet mit</translation>
    </message>
    <message>
        <source>does not end with</source>
        <translation>endet nicht mit</translation>
    </message>
    <message>
        <source>contains</source>
        <translation>enthält</translation>
    </message>
    <message>
        <source>does not contain</source>
        <translation>enthält nicht</translation>
    </message>
    <message>
        <source>greater than</source>
        <translation>größer als</translation>
    </message>
    <message>
        <source>greater than or equal</source>
        <translation>größer oder gleich</translation>
    </message>
    <message>
        <source>less than</source>
        <translation>kleiner als</translation>
    </message>
    <message>
        <source>less than or equal</source>
        <translation>kleiner oder gleich</translation>
    </message>
    <message>
        <source>between</source>
        <translation>zwischen</translation>
    </message>
    <message>
        <source>not between</source>
        <translation>nicht zwischen</translation>
    </message>
    <message>
        <source>program tenant</source>
        <translation>Mieter programmieren</translation>
    </message>
    <message>
        <source>program directory code</source>
        <translation>Rufcode programmieren</translation>
    </message>
    <message>
        <source>change directory code</source>
        <translation>Rufcode ändern</translation>
    </message>
    <message>
        <source>delete directory code</source>
        <translation>Rufcode löschen</translation>
    </message>
    <message>
        <source>new</source>
        <translation>neu</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>geändert</translation>
    </message>
    <message>
        <source>deleted</source>
        <translation>gelöscht</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>phone</source>
        <translation>Telefon</translation>
    </message>
    <message>
        <source>extension</source>
        <translation>Durchwahl</translation>
    </message>
    <message>
        <source>delay</source>
        <translation>Verzögerung</translation>
    </message>
    <message>
        <source>do not disturb</source>
        <translation>Nicht stören</translation>
    </message>
    <message>
        <source>do-not-disturb schedule</source>
        <translation>Zeitplan „Nicht stören“</translation>
    </message>
    <message>
        <source>call forwarding</source>
        <translation>Rufweiterleitung</translation>
    </message>
    <message>
        <source>call-forward schedule</source>
        <translation>Zeitplan der Weiterleitung</translation>
    </message>
    <message>
        <source>call-forward phone</source>
        <translation>Telefon der Weiterleitung</translation>
    </message>
    <message>
        <source>call-forward extension</source>
        <translation>Durchwahl der Weiterleitung</translation>
    </message>
    <message>
        <source>call-forward delay</source>
        <translation>Verzögerung der Weiterleitung</translation>
    </message>
    <message>
        <source>active</source>
        <translation>aktiv</translation>
    </message>
    <message>
        <source>start used</source>
        <translation>Beginn gilt</translation>
    </message>
    <message>
        <source>start date</source>
        <translation>Tag des Beginns</translation>
    </message>
    <message>
        <source>start time</source>
        <translation>Uhrzeit des Beginns</translation>
    </message>
    <message>
        <source>end used</source>
        <translation>Ende gilt</translation>
    </message>
    <message>
        <source>end date</source>
        <translation>Tag des Endes</translation>
    </message>
    <message>
        <source>end time</source>
        <translation>Uhrzeit des Endes</translation>
    </message>
    <message>
        <source>display name</source>
        <translation>Anzeigename</translation>
    </message>
    <message>
        <source>display mode</source>
        <translation>Anzeigeart</translation>
    </message>
    <message>
        <source>differs</source>
        <translation>abweichend</translation>
    </message>
    <message>
        <source>Capacity</source>
        <translation>Kapazität</translation>
    </message>
    <message>
        <source>Code digits</source>
        <translation>Stellen der Rufcodes</translation>
    </message>
    <message>
        <source>Entry digits</source>
        <translation>Stellen der Zutrittscodes</translation>
    </message>
    <message>
        <source>Default end</source>
        <translation>Übliches Ende</translation>
    </message>
    <message>
        <source>Ignores facility</source>
        <translation>Ohne Objektcode</translation>
    </message>
    <message>
        <source>Card facility</source>
        <translation>Objektcode der Karten</translation>
    </message>
    <message>
        <source>Transmitter facility</source>
        <translation>Objektcode der Sender</translation>
    </message>
    <message>
        <source>Settlement</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>Spalte</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Instead</source>
        <translation>Stattdessen</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>Grund</translation>
    </message>
    <message>
        <source>refused</source>
        <translation>abgelehnt</translation>
    </message>
    <message>
        <source>adjusted</source>
        <translation>angepasst</translation>
    </message>
    <message>
        <source>kept</source>
        <translation>belassen</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>fehlt</translation>
    </message>
    <message>
        <source>left</source>
        <translation>nicht übernommen</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Null</source>
        <translation>Null (leer)</translation>
    </message>
</context>
<context>
    <name>MergePage</name>
    <message>
        <source>Merge with the unit</source>
        <translation>Mit der Anlage abgleichen</translation>
    </message>
    <message>
        <source>Choose the unit’s &amp;file…</source>
        <translation>&amp;Datei der Anlage wählen…</translation>
    </message>
    <message>
        <source>No file is chosen.</source>
        <translation>Keine Datei ist gewählt.</translation>
    </message>
    <message>
        <source>Leave out &amp;bad lines</source>
        <translation>&amp;Fehlerhafte Zeilen weglassen</translation>
    </message>
    <message>
        <source>No stored code is deleted then: a bad line may stand for any of them</source>
        <translation>Dann wird kein gespeicherter Code gelöscht: Eine fehlerhafte Zeile kann für jeden von ihnen stehen</translation>
    </message>
    <message>
        <source>Fi&amp;nd:</source>
        <translation>S&amp;uchen:</translation>
    </message>
    <message>
        <source>Accept &amp;all that are shown</source>
        <translation>&amp;Alle angezeigten annehmen</translation>
    </message>
    <message>
        <source>Accept n&amp;one</source>
        <translation>&amp;Keine annehmen</translation>
    </message>
    <message>
        <source>Differences between the unit and the store</source>
        <translation>Unterschiede zwischen Anlage und Bestand</translation>
    </message>
    <message>
        <source>Both &amp;sides:</source>
        <translation>Beide &amp;Seiten:</translation>
    </message>
    <message>
        <source>Both sides of the difference</source>
        <translation>Beide Seiten des Unterschieds</translation>
    </message>
    <message>
        <source>&amp;Make what is accepted</source>
        <translation>A&amp;ngenommenes übernehmen</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>Text in any column</source>
        <translation>Text in einer Spalte</translation>
    </message>
</context>
<context>
    <name>Moving</name>
    <message>
        <source>Reading the building</source>
        <translation>Das Lesen des Gebäudes</translation>
    </message>
    <message>
        <source>%1 cannot be brought in.</source>
        <translation>%1 kann nicht übernommen werden.</translation>
    </message>
    <message>
        <source>Make the new store</source>
        <translation>Neuen Bestand anlegen</translation>
    </message>
    <message>
        <source>Bringing the building in</source>
        <translation>Das Übernehmen des Gebäudes</translation>
    </message>
    <message>
        <source>No store can be made at %1.</source>
        <translation>Unter %1 kann kein Bestand angelegt werden.</translation>
    </message>
    <message>
        <source>Make the new store on a server</source>
        <translation>Neuen Bestand auf einem Server anlegen</translation>
    </message>
    <message>
        <source>Bring an existing building in</source>
        <translation>Bestehendes Gebäude übernehmen</translation>
    </message>
    <message>
        <source>Desktop databases (*.mdb *.accdb);;All files (*)</source>
        <translation>Desktop-Datenbanken (*.mdb *.accdb);;Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>OverviewPage</name>
    <message>
        <source>Overview</source>
        <translation>Übersicht</translation>
    </message>
    <message>
        <source>Units</source>
        <translation>Anlagen</translation>
    </message>
    <message>
        <source>Ends within &amp;30 days:</source>
        <translation>Endet innerhalb von &amp;30 Tagen:</translation>
    </message>
    <message>
        <source>What ends soon</source>
        <translation>Was bald endet</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Ja</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Nein</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
</context>
<context>
    <name>ReportPage</name>
    <message>
        <source>Report</source>
        <translation>Bericht</translation>
    </message>
    <message>
        <source>All of these conditions hold</source>
        <translation>Alle diese Bedingungen gelten zugleich</translation>
    </message>
    <message>
        <source>Condition 1: field</source>
        <translation>Bedingung 1: Feld</translation>
    </message>
    <message>
        <source>No condition</source>
        <translation>Keine Bedingung</translation>
    </message>
    <message>
        <source>Condition 1: comparison</source>
        <translation>Bedingung 1: Vergleich</translation>
    </message>
    <message>
        <source>Condition 1</source>
        <translation>Bedingung 1</translation>
    </message>
    <message>
        <source>and</source>
        <translation>und</translation>
    </message>
    <message>
        <source>Condition 1: second value</source>
        <translation>Bedingung 1: zweiter Wert</translation>
    </message>
    <message>
        <source>Condition 1: second date</source>
        <translation>Bedingung 1: zweites Datum</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>Condition 1: yes</source>
        <translation>Bedingung 1: ja</translation>
    </message>
    <message>
        <source>Condition 1: type</source>
        <translation>Bedingung 1: Typ</translation>
    </message>
    <message>
        <source>✕</source>
        <translation>✕</translation>
    </message>
    <message>
        <source>Clear condition 1</source>
        <translation>Bedingung 1 leeren</translation>
    </message>
    <message>
        <source>Condition 2: field</source>
        <translation>Bedingung 2: Feld</translation>
    </message>
    <message>
        <source>Condition 2: comparison</source>
        <translation>Bedingung 2: Vergleich</translation>
    </message>
    <message>
        <source>Condition 2</source>
        <translation>Bedingung 2</translation>
    </message>
    <message>
        <source>Condition 2: second value</source>
        <translation>Bedingung 2: zweiter Wert</translation>
    </message>
    <message>
        <source>Condition 2: second date</source>
        <translation>Bedingung 2: zweites Datum</translation>
    </message>
    <message>
        <source>Condition 2: yes</source>
        <translation>Bedingung 2: ja</translation>
    </message>
    <message>
        <source>Condition 2: type</source>
        <translation>Bedingung 2: Typ</translation>
    </message>
    <message>
        <source>Clear condition 2</source>
        <translation>Bedingung 2 leeren</translation>
    </message>
    <message>
        <source>Condition 3: field</source>
        <translation>Bedingung 3: Feld</translation>
    </message>
    <message>
        <source>Condition 3: comparison</source>
        <translation>Bedingung 3: Vergleich</translation>
    </message>
    <message>
        <source>Condition 3</source>
        <translation>Bedingung 3</translation>
    </message>
    <message>
        <source>Condition 3: second value</source>
        <translation>Bedingung 3: zweiter Wert</translation>
    </message>
    <message>
        <source>Condition 3: second date</source>
        <translation>Bedingung 3: zweites Datum</translation>
    </message>
    <message>
        <source>Condition 3: yes</source>
        <translation>Bedingung 3: ja</translation>
    </message>
    <message>
        <source>Condition 3: type</source>
        <translation>Bedingung 3: Typ</translation>
    </message>
    <message>
        <source>Clear condition 3</source>
        <translation>Bedingung 3 leeren</translation>
    </message>
    <message>
        <source>Condition 4: field</source>
        <translation>Bedingung 4: Feld</translation>
    </message>
    <message>
        <source>Condition 4: comparison</source>
        <translation>Bedingung 4: Vergleich</translation>
    </message>
    <message>
        <source>Condition 4</source>
        <translation>Bedingung 4</translation>
    </message>
    <message>
        <source>Condition 4: second value</source>
        <translation>Bedingung 4: zweiter Wert</translation>
    </message>
    <message>
        <source>Condition 4: second date</source>
        <translation>Bedingung 4: zweites Datum</translation>
    </message>
    <message>
        <source>Condition 4: yes</source>
        <translation>Bedingung 4: ja</translation>
    </message>
    <message>
        <source>Condition 4: type</source>
        <translation>Bedingung 4: Typ</translation>
    </message>
    <message>
        <source>Clear condition 4</source>
        <translation>Bedingung 4 leeren</translation>
    </message>
    <message>
        <source>Condition 5: field</source>
        <translation>Bedingung 5: Feld</translation>
    </message>
    <message>
        <source>Condition 5: comparison</source>
        <translation>Bedingung 5: Vergleich</translation>
    </message>
    <message>
        <source>Condition 5</source>
        <translation>Bedingung 5</translation>
    </message>
    <message>
        <source>Condition 5: second value</source>
        <translation>Bedingung 5: zweiter Wert</translation>
    </message>
    <message>
        <source>Condition 5: second date</source>
        <translation>Bedingung 5: zweites Datum</translation>
    </message>
    <message>
        <source>Condition 5: yes</source>
        <translation>Bedingung 5: ja</translation>
    </message>
    <message>
        <source>Condition 5: type</source>
        <translation>Bedingung 5: Typ</translation>
    </message>
    <message>
        <source>Clear condition 5</source>
        <translation>Bedingung 5 leeren</translation>
    </message>
    <message>
        <source>&amp;Show</source>
        <translation>&amp;Anzeigen</translation>
    </message>
    <message>
        <source>Rows of the report</source>
        <translation>Zeilen des Berichts</translation>
    </message>
    <message>
        <source>&amp;CSV…</source>
        <translation>&amp;CSV…</translation>
    </message>
    <message>
        <source>P&amp;DF…</source>
        <translation>P&amp;DF…</translation>
    </message>
    <message>
        <source>&amp;Print…</source>
        <translation>D&amp;rucken…</translation>
    </message>
    <message>
        <source>De&amp;lete the chosen…</source>
        <translation>Gewählte &amp;löschen…</translation>
    </message>
    <message>
        <source>&amp;Find:</source>
        <translation>&amp;Suchen:</translation>
    </message>
    <message>
        <source>Text in any column</source>
        <translation>Text in einer Spalte</translation>
    </message>
</context>
<context>
    <name>Screens</name>
    <message>
        <source>Doors and schedules</source>
        <translation>Türen und Zeitpläne</translation>
    </message>
    <message>
        <source>Overview</source>
        <translation>Übersicht</translation>
    </message>
    <message>
        <source>Tenants</source>
        <translation>Mieter</translation>
    </message>
    <message>
        <source>Credentials</source>
        <translation>Ausweise</translation>
    </message>
    <message>
        <source>New tenants</source>
        <translation>Neue Mieter</translation>
    </message>
    <message>
        <source>Directory codes</source>
        <translation>Rufcodes</translation>
    </message>
    <message>
        <source>Credential report</source>
        <translation>Ausweisbericht</translation>
    </message>
    <message>
        <source>Directory-code report</source>
        <translation>Rufcode-Bericht</translation>
    </message>
    <message>
        <source>Programming steps</source>
        <translation>Programmierschritte</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>Merge with the unit</source>
        <translation>Mit der Anlage abgleichen</translation>
    </message>
    <message>
        <source>Units</source>
        <translation>Anlagen</translation>
    </message>
</context>
<context>
    <name>Server</name>
    <message>
        <source>%1 wants a password. It is kept until the program ends, and written nowhere.</source>
        <translation>%1 will ein Passwort. Es wird behalten, bis das Programm endet, und nirgends aufgeschrieben.</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Its name, postgresql://HOST/DATABASE or service=NAME. A password does not belong here: it is asked for where the server wants one.</source>
        <translation>Sein Name, postgresql://RECHNER/DATENBANK oder service=NAME. Ein Passwort gehört nicht hierher: es wird erfragt, wo der Server eines will.</translation>
    </message>
    <message>
        <source>Open a store on a server</source>
        <translation>Bestand auf einem Server öffnen</translation>
    </message>
    <message>
        <source>%1 is no store on a server.</source>
        <translation>%1 ist kein Bestand auf einem Server.</translation>
    </message>
    <message>
        <source>Its name begins with postgresql:// or service=.</source>
        <translation>Sein Name beginnt mit postgresql:// oder service=.</translation>
    </message>
</context>
<context>
    <name>StepsPage</name>
    <message>
        <source>Programming steps</source>
        <translation>Programmierschritte</translation>
    </message>
    <message>
        <source>&amp;Find:</source>
        <translation>&amp;Suchen:</translation>
    </message>
    <message>
        <source>Show only steps with this text</source>
        <translation>Nur Schritte mit diesem Text anzeigen</translation>
    </message>
    <message>
        <source>Steps that wait for the unit</source>
        <translation>Schritte, die auf die Anlage warten</translation>
    </message>
    <message>
        <source>&amp;Export…</source>
        <translation>&amp;Exportieren…</translation>
    </message>
    <message>
        <source>&amp;Mark as sent</source>
        <translation>Als &amp;gesendet markieren</translation>
    </message>
</context>
<context>
    <name>TablePrinter</name>
    <message>
        <source>Page %1</source>
        <translation>Seite %1</translation>
    </message>
</context>
<context>
    <name>TenantCreatingPage</name>
    <message>
        <source>New tenants with credentials</source>
        <translation>Neue Mieter mit Ausweisen</translation>
    </message>
    <message>
        <source>Credentials: a tenant is created for each</source>
        <translation>Ausweise: Für jeden wird ein Mieter angelegt</translation>
    </message>
    <message>
        <source>&amp;Type:</source>
        <translation>&amp;Typ:</translation>
    </message>
    <message>
        <source>First n&amp;umber:</source>
        <translation>Erste &amp;Nummer:</translation>
    </message>
    <message>
        <source>&amp;Last number:</source>
        <translation>&amp;Letzte Nummer:</translation>
    </message>
    <message>
        <source>none for one tenant alone</source>
        <translation>leer für einen einzigen Mieter</translation>
    </message>
    <message>
        <source>Card or transmitter</source>
        <translation>Karte oder Sender</translation>
    </message>
    <message>
        <source>F&amp;acility code:</source>
        <translation>Ob&amp;jektcode:</translation>
    </message>
    <message>
        <source>&amp;ID code:</source>
        <translation>&amp;ID-Code:</translation>
    </message>
    <message>
        <source>Se&amp;quence code:</source>
        <translation>Se&amp;quenzcode:</translation>
    </message>
    <message>
        <source>&amp;Button 1</source>
        <translation>Taste &amp;1</translation>
    </message>
    <message>
        <source>Button &amp;4</source>
        <translation>Taste &amp;4</translation>
    </message>
    <message>
        <source>Access</source>
        <translation>Zutritt</translation>
    </message>
    <message>
        <source>Door 1:</source>
        <translation>Tür 1:</translation>
    </message>
    <message>
        <source>Schedule of door 1</source>
        <translation>Zeitplan von Tür 1</translation>
    </message>
    <message>
        <source>Door 2:</source>
        <translation>Tür 2:</translation>
    </message>
    <message>
        <source>Schedule of door 2</source>
        <translation>Zeitplan von Tür 2</translation>
    </message>
    <message>
        <source>Door 3:</source>
        <translation>Tür 3:</translation>
    </message>
    <message>
        <source>Schedule of door 3</source>
        <translation>Zeitplan von Tür 3</translation>
    </message>
    <message>
        <source>Door 4:</source>
        <translation>Tür 4:</translation>
    </message>
    <message>
        <source>Schedule of door 4</source>
        <translation>Zeitplan von Tür 4</translation>
    </message>
    <message>
        <source>Period in which they have access</source>
        <translation>Zeitraum, in dem sie Zutritt haben</translation>
    </message>
    <message>
        <source>F&amp;rom:</source>
        <translation>A&amp;b:</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Ab</translation>
    </message>
    <message>
        <source>U&amp;ntil:</source>
        <translation>Bi&amp;s:</translation>
    </message>
    <message>
        <source>Until</source>
        <translation>Bis</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>S&amp;peichern</translation>
    </message>
    <message>
        <source>Start o&amp;ver</source>
        <translation>Neu &amp;anfangen</translation>
    </message>
</context>
<context>
    <name>TenantForm</name>
    <message>
        <source>as usual</source>
        <translation>wie üblich</translation>
    </message>
    <message>
        <source>as it is for each</source>
        <translation>wie bei jedem</translation>
    </message>
    <message>
        <source>%1 (zero)</source>
        <translation>%1 (null)</translation>
    </message>
</context>
<context>
    <name>TenantsPage</name>
    <message>
        <source>Fin&amp;d:</source>
        <translation>&amp;Suchen:</translation>
    </message>
    <message>
        <source>Tenants</source>
        <translation>Mieter</translation>
    </message>
    <message>
        <source>New tenant</source>
        <translation>Neuer Mieter</translation>
    </message>
    <message>
        <source>What you change here is changed for all of them.</source>
        <translation>Was Sie hier ändern, wird bei allen geändert.</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>&amp;Last name:</source>
        <translation>&amp;Nachname:</translation>
    </message>
    <message>
        <source>&amp;First name:</source>
        <translation>&amp;Vorname:</translation>
    </message>
    <message>
        <source>&amp;Middle initial:</source>
        <translation>&amp;Mittelinitiale:</translation>
    </message>
    <message>
        <source>Name &amp;at the unit:</source>
        <translation>Name an der An&amp;lage:</translation>
    </message>
    <message>
        <source>Lease</source>
        <translation>Mietzeit</translation>
    </message>
    <message>
        <source>F&amp;rom:</source>
        <translation>A&amp;b:</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Ab</translation>
    </message>
    <message>
        <source>&amp;Until:</source>
        <translation>B&amp;is:</translation>
    </message>
    <message>
        <source>Until</source>
        <translation>Bis</translation>
    </message>
    <message>
        <source>The period holds (acti&amp;ve)</source>
        <translation>Zeitraum gilt (ak&amp;tiv)</translation>
    </message>
    <message>
        <source>Without a date the unit gives a new tenant its default period.</source>
        <translation>Ohne Datum gibt die Anlage einem neuen Mieter ihren üblichen Zeitraum.</translation>
    </message>
    <message>
        <source>Access</source>
        <translation>Zutritt</translation>
    </message>
    <message>
        <source>Door &amp;1:</source>
        <translation>Tür &amp;1:</translation>
    </message>
    <message>
        <source>Door &amp;2:</source>
        <translation>Tür &amp;2:</translation>
    </message>
    <message>
        <source>Door &amp;3:</source>
        <translation>Tür &amp;3:</translation>
    </message>
    <message>
        <source>Door &amp;4:</source>
        <translation>Tür &amp;4:</translation>
    </message>
    <message>
        <source>&amp;Group:</source>
        <translation>&amp;Gruppe:</translation>
    </message>
    <message>
        <source>Credentials and code</source>
        <translation>Ausweise und Code</translation>
    </message>
    <message>
        <source>&amp;Card:</source>
        <translation>&amp;Karte:</translation>
    </message>
    <message>
        <source>&amp;Other card:</source>
        <translation>An&amp;dere Karte:</translation>
    </message>
    <message>
        <source>Director&amp;y code:</source>
        <translation>&amp;Rufcode:</translation>
    </message>
    <message>
        <source>Res&amp;ident</source>
        <translation>Be&amp;wohner</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>S&amp;peichern</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>Ne&amp;u</translation>
    </message>
    <message>
        <source>&amp;End lease…</source>
        <translation>Mietzeit b&amp;eenden…</translation>
    </message>
    <message>
        <source>Dele&amp;te…</source>
        <translation>Lös&amp;chen…</translation>
    </message>
    <message>
        <source>Text in any column</source>
        <translation>Text in einer Spalte</translation>
    </message>
</context>
<context>
    <name>UnitsPage</name>
    <message>
        <source>&amp;Units:</source>
        <translation>&amp;Anlagen:</translation>
    </message>
    <message>
        <source>Units</source>
        <translation>Anlagen</translation>
    </message>
    <message>
        <source>New unit</source>
        <translation>Neue Anlage</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Anlage</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>&amp;Key:</source>
        <translation>S&amp;chlüssel:</translation>
    </message>
    <message>
        <source>the next one</source>
        <translation>der nächste</translation>
    </message>
    <message>
        <source>&amp;Type:</source>
        <translation>&amp;Typ:</translation>
    </message>
    <message>
        <source>Ca&amp;pacity of the type:</source>
        <translation>Ka&amp;pazität des Typs:</translation>
    </message>
    <message>
        <source>Codes</source>
        <translation>Codes</translation>
    </message>
    <message>
        <source>Digits of directory &amp;codes:</source>
        <translation>Stellen der &amp;Rufcodes:</translation>
    </message>
    <message>
        <source>Digits of &amp;entry codes:</source>
        <translation>Stellen der &amp;Zutrittscodes:</translation>
    </message>
    <message>
        <source>Usual en&amp;d:</source>
        <translation>Übliches &amp;Ende:</translation>
    </message>
    <message>
        <source>none, 90d, or a day as 2026-12-31</source>
        <translation>none, 90d oder ein Tag wie 2026-12-31</translation>
    </message>
    <message>
        <source>Facility codes</source>
        <translation>Objektcodes</translation>
    </message>
    <message>
        <source>&amp;Ignores facility codes</source>
        <translation>&amp;Ohne Objektcodes</translation>
    </message>
    <message>
        <source>Of ca&amp;rds:</source>
        <translation>Der &amp;Karten:</translation>
    </message>
    <message>
        <source>Of trans&amp;mitters:</source>
        <translation>Der Sen&amp;der:</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Ne&amp;w</source>
        <translation>Ne&amp;u</translation>
    </message>
    <message>
        <source>De&amp;lete…</source>
        <translation>&amp;Löschen…</translation>
    </message>
    <message>
        <source>&amp;Find:</source>
        <translation>Suc&amp;hen:</translation>
    </message>
    <message>
        <source>Text in any column</source>
        <translation>Text in einer Spalte</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Looks after a building.</source>
        <translation>Verwaltet ein Gebäude.</translation>
    </message>
    <message>
        <source>The store to open, a file or postgresql://HOST/DATABASE; else that of QORHOST_DB, else that of the last time.</source>
        <translation>Der Bestand, der geöffnet wird, eine Datei oder postgresql://RECHNER/DATENBANK; sonst der von QORHOST_DB, sonst der vom letzten Mal.</translation>
    </message>
    <message>
        <source>The store to open, as the argument names it.</source>
        <translation>Der Bestand, der geöffnet wird, wie das Argument ihn nennt.</translation>
    </message>
</context>
<context>
    <name>qorhost::BuildingPage</name>
    <message>
        <source>The unit has no doors.</source>
        <translation>Die Anlage hat keine Türen.</translation>
    </message>
    <message>
        <source>Doors and schedules cannot be shown.</source>
        <translation>Türen und Zeitpläne können nicht gezeigt werden.</translation>
    </message>
    <message>
        <source>Door %1</source>
        <translation>Tür %1</translation>
    </message>
    <message>
        <source>Door</source>
        <translation>Tür</translation>
    </message>
    <message>
        <source>New schedule</source>
        <translation>Neuer Zeitplan</translation>
    </message>
    <message>
        <source>Schedule %1, which every unit has</source>
        <translation>Zeitplan %1, den jede Anlage hat</translation>
    </message>
    <message>
        <source>Schedule %1</source>
        <translation>Zeitplan %1</translation>
    </message>
    <message>
        <source>Renaming the door</source>
        <translation>Die Tür wird umbenannt</translation>
    </message>
    <message>
        <source>The doors cannot be shown.</source>
        <translation>Die Türen können nicht gezeigt werden.</translation>
    </message>
    <message>
        <source>Door %1 is called %2 already.</source>
        <translation>Tür %1 heißt schon %2.</translation>
    </message>
    <message>
        <source>Door %1 is called %2 now.</source>
        <translation>Tür %1 heißt jetzt %2.</translation>
    </message>
    <message>
        <source>Saving the schedule</source>
        <translation>Der Zeitplan wird gespeichert</translation>
    </message>
    <message>
        <source>The schedules cannot be shown.</source>
        <translation>Die Zeitpläne können nicht gezeigt werden.</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Schedule %1 is stored so already.</source>
        <translation>Zeitplan %1 ist schon so gespeichert.</translation>
    </message>
    <message>
        <source>Saved schedule %1.</source>
        <translation>Zeitplan %1 gespeichert.</translation>
    </message>
    <message>
        <source>Delete the schedule %1?</source>
        <translation>Den Zeitplan %1 löschen?</translation>
    </message>
    <message>
        <source>Deleted schedule %1.</source>
        <translation>Zeitplan %1 gelöscht.</translation>
    </message>
    <message>
        <source>Deleting the schedule</source>
        <translation>Der Zeitplan wird gelöscht</translation>
    </message>
</context>
<context>
    <name>qorhost::BusyBar</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Another program is writing to the store; waiting for it</source>
        <translation>Ein anderes Programm schreibt in den Bestand; es wird darauf gewartet</translation>
    </message>
</context>
<context>
    <name>qorhost::CallLogDock</name>
    <message>
        <source>Call log</source>
        <translation>Aufrufprotokoll</translation>
    </message>
    <message>
        <source>%1 lines</source>
        <translation>%1 Zeilen</translation>
    </message>
    <message>
        <source>
%1 older ones are gone</source>
        <translation>
%1 ältere sind fort</translation>
    </message>
    <message>
        <source>Save the trace</source>
        <translation>Mitschnitt speichern</translation>
    </message>
    <message>
        <source>The trace cannot be saved.</source>
        <translation>Der Mitschnitt kann nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Saved a trace of %1 lines.</source>
        <translation>Mitschnitt von %1 Zeilen gespeichert.</translation>
    </message>
    <message>
        <source>Saved the last %1 lines: without what came before them they cannot be replayed.</source>
        <translation>Die letzten %1 Zeilen gespeichert: Ohne das, was vor ihnen kam, können sie nicht wiederholt werden.</translation>
    </message>
</context>
<context>
    <name>qorhost::ChangesDialog</name>
    <message>
        <source>What will be changed</source>
        <translation>Was geändert wird</translation>
    </message>
</context>
<context>
    <name>qorhost::CredentialPage</name>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>A new credential cannot be begun.</source>
        <translation>Ein neuer Ausweis kann nicht begonnen werden.</translation>
    </message>
    <message>
        <source>First n&amp;umber:</source>
        <translation>Erste &amp;Nummer:</translation>
    </message>
    <message>
        <source>N&amp;umber:</source>
        <translation>&amp;Nummer:</translation>
    </message>
    <message>
        <source>New credentials</source>
        <translation>Neue Ausweise</translation>
    </message>
    <message>
        <source>The credentials cannot be shown.</source>
        <translation>Die Ausweise können nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>The credential cannot be shown.</source>
        <translation>Der Ausweis kann nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>Saving credentials</source>
        <translation>Ausweise werden gespeichert</translation>
    </message>
    <message>
        <source>Saved %1.</source>
        <translation>%1 gespeichert.</translation>
    </message>
    <message>
        <source>Saving the credential</source>
        <translation>Der Ausweis wird gespeichert</translation>
    </message>
    <message>
        <source>%1 is stored so already.</source>
        <translation>%1 ist schon so gespeichert.</translation>
    </message>
    <message>
        <source>Renumber</source>
        <translation>Umnummerieren</translation>
    </message>
    <message>
        <source>New number of %1:</source>
        <translation>Neue Nummer von %1:</translation>
    </message>
    <message>
        <source>Renumbering the credential</source>
        <translation>Der Ausweis wird umnummeriert</translation>
    </message>
    <message>
        <source>%1 has the number %2 now.</source>
        <translation>%1 hat jetzt die Nummer %2.</translation>
    </message>
    <message>
        <source>Delete %1?</source>
        <translation>%1 löschen?</translation>
    </message>
    <message>
        <source>Deleting the credential</source>
        <translation>Der Ausweis wird gelöscht</translation>
    </message>
    <message>
        <source>Deleted %1.</source>
        <translation>%1 gelöscht.</translation>
    </message>
</context>
<context>
    <name>qorhost::CredentialReportPage</name>
    <message>
        <source>Credential report</source>
        <translation>Ausweisbericht</translation>
    </message>
</context>
<context>
    <name>qorhost::DateField</name>
    <message>
        <source>set</source>
        <translation>gesetzt</translation>
    </message>
    <message>
        <source>date is set</source>
        <translation>Datum ist gesetzt</translation>
    </message>
    <message>
        <source>date and time</source>
        <translation>Datum und Uhrzeit</translation>
    </message>
</context>
<context>
    <name>qorhost::DirCodePage</name>
    <message>
        <source>A new directory code cannot be begun.</source>
        <translation>Ein neuer Rufcode kann nicht begonnen werden.</translation>
    </message>
    <message>
        <source>New directory code</source>
        <translation>Neuer Rufcode</translation>
    </message>
    <message>
        <source>Directory code %1</source>
        <translation>Rufcode %1</translation>
    </message>
    <message>
        <source>The directory codes cannot be shown.</source>
        <translation>Die Rufcodes können nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>The directory code cannot be shown.</source>
        <translation>Der Rufcode kann nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>Saving the directory code</source>
        <translation>Der Rufcode wird gespeichert</translation>
    </message>
    <message>
        <source>Saved directory code %1.</source>
        <translation>Rufcode %1 gespeichert.</translation>
    </message>
    <message>
        <source>%1 is stored so already.</source>
        <translation>%1 ist schon so gespeichert.</translation>
    </message>
    <message>
        <source>Renumber</source>
        <translation>Umnummerieren</translation>
    </message>
    <message>
        <source>New code in place of %1:</source>
        <translation>Neuer Code anstelle von %1:</translation>
    </message>
    <message>
        <source>Renumbering the directory code</source>
        <translation>Der Rufcode wird umnummeriert</translation>
    </message>
    <message>
        <source>%1 is %2 now.</source>
        <translation>%1 ist jetzt %2.</translation>
    </message>
    <message>
        <source>Deleting the directory code</source>
        <translation>Der Rufcode wird gelöscht</translation>
    </message>
    <message>
        <source>Deleted directory code %1.</source>
        <translation>Rufcode %1 gelöscht.</translation>
    </message>
</context>
<context>
    <name>qorhost::DirCodeReportPage</name>
    <message>
        <source>Directory-code report</source>
        <translation>Rufcode-Bericht</translation>
    </message>
</context>
<context>
    <name>qorhost::EmptyHint</name>
    <message>
        <source>Nothing here has “%1” in it.</source>
        <translation>Nichts hier enthält „%1“.</translation>
    </message>
</context>
<context>
    <name>qorhost::EntryPage</name>
    <message>
        <source>What you entered is not saved. Leave it?</source>
        <translation>Was Sie eingegeben haben, ist nicht gespeichert. Verlassen?</translation>
    </message>
</context>
<context>
    <name>qorhost::FaultsDialog</name>
    <message>
        <source>Check of the store</source>
        <translation>Prüfung des Bestands</translation>
    </message>
    <message>
        <source>What is wrong, and how to mend it (%1):</source>
        <translation>Was nicht stimmt und wie es zu beheben ist (%1):</translation>
    </message>
    <message>
        <source>What is wrong</source>
        <translation>Was nicht stimmt</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copies the chosen rows; all, where none is chosen (Ctrl+C)</source>
        <translation>Kopiert die gewählten Zeilen, alle, wenn keine gewählt ist (Strg+C)</translation>
    </message>
</context>
<context>
    <name>qorhost::HistoryPage</name>
    <message>
        <source>The entry cannot be shown.</source>
        <translation>Der Eintrag kann nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>The history cannot be shown.</source>
        <translation>Der Verlauf kann nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>Undo %1? The rows become what they were before it, and the steps that tell the unit are queued.</source>
        <translation>%1 rückgängig machen? Die Zeilen werden, was sie vor ihm waren, und die Schritte, die es der Anlage sagen, werden eingereiht.</translation>
    </message>
    <message>
        <source>Undone: %1.</source>
        <translation>Rückgängig gemacht: %1.</translation>
    </message>
    <message>
        <source>Nothing was done in this unit yet.</source>
        <translation>In dieser Anlage wurde noch nichts getan.</translation>
    </message>
    <message>
        <source>Choose an entry to see what it made of the rows.</source>
        <translation>Wählen Sie einen Eintrag, um zu sehen, was er aus den Zeilen machte.</translation>
    </message>
    <message>
        <source>Undoing the entry</source>
        <translation>Der Eintrag wird rückgängig gemacht</translation>
    </message>
</context>
<context>
    <name>qorhost::ImportPage</name>
    <message>
        <source>Rows: %1, refused: %2.</source>
        <translation>Zeilen: %1, davon abgelehnt: %2.</translation>
    </message>
    <message>
        <source>as found</source>
        <translation>wie erkannt</translation>
    </message>
    <message>
        <source>Windows (1252)</source>
        <translation>Windows (1252)</translation>
    </message>
    <message>
        <source>comma</source>
        <translation>Komma</translation>
    </message>
    <message>
        <source>semicolon</source>
        <translation>Semikolon</translation>
    </message>
    <message>
        <source>tab</source>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>are refused</source>
        <translation>werden abgelehnt</translation>
    </message>
    <message>
        <source>begin with the day</source>
        <translation>beginnen mit dem Tag</translation>
    </message>
    <message>
        <source>begin with the month</source>
        <translation>beginnen mit dem Monat</translation>
    </message>
    <message>
        <source>begin with the year</source>
        <translation>beginnen mit dem Jahr</translation>
    </message>
    <message>
        <source>above the rows stands how such dates are read</source>
        <translation>wie solche Daten gelesen werden, steht über den Zeilen</translation>
    </message>
    <message>
        <source>are passed over</source>
        <translation>werden übergangen</translation>
    </message>
    <message>
        <source>are changed</source>
        <translation>werden geändert</translation>
    </message>
    <message>
        <source>Choose a spreadsheet</source>
        <translation>Tabelle wählen</translation>
    </message>
    <message>
        <source>Spreadsheets as text (*.csv *.txt *.tsv);;All files (*)</source>
        <translation>Tabellen als Text (*.csv *.txt *.tsv);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>The file cannot be read.</source>
        <translation>Die Datei kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>(nothing: left out)</source>
        <translation>(nichts: weggelassen)</translation>
    </message>
    <message>
        <source>(column %1)</source>
        <translation>(Spalte %1)</translation>
    </message>
    <message>
        <source>Rows: %1.</source>
        <translation>Zeilen: %1.</translation>
    </message>
    <message>
        <source>Rows: %1. None is refused.</source>
        <translation>Zeilen: %1. Keine wird abgelehnt.</translation>
    </message>
    <message>
        <source>They are to be checked.</source>
        <translation>Sie sind noch zu prüfen.</translation>
    </message>
    <message>
        <source>Leave out the chosen rows (%1)? The file stays as it is.</source>
        <translation>Die gewählten Zeilen (%1) weglassen? Die Datei bleibt, wie sie ist.</translation>
    </message>
    <message>
        <source>Cancelled. Nothing was changed.</source>
        <translation>Abgebrochen. Nichts wurde geändert.</translation>
    </message>
    <message>
        <source>The rows cannot be checked.</source>
        <translation>Die Zeilen können nicht geprüft werden.</translation>
    </message>
    <message>
        <source>Checked: %1 would be stored, %2 refused. Nothing was stored.</source>
        <translation>Geprüft: %1 würden gespeichert, %2 abgelehnt. Nichts wurde gespeichert.</translation>
    </message>
    <message>
        <source>Nothing was stored: every row is refused.</source>
        <translation>Nichts wurde gespeichert: Jede Zeile wird abgelehnt.</translation>
    </message>
    <message>
        <source>Rows that are refused: %1. They stay here to be mended. Import the others (%2)?</source>
        <translation>Abgelehnte Zeilen: %1. Sie bleiben hier, um berichtigt zu werden. Die anderen (%2) importieren?</translation>
    </message>
    <message>
        <source>The rows cannot be imported.</source>
        <translation>Die Zeilen können nicht importiert werden.</translation>
    </message>
    <message>
        <source>Imported: %1. Stored already: %2. Refused: %3.</source>
        <translation>Importiert: %1. Schon gespeichert: %2. Abgelehnt: %3.</translation>
    </message>
    <message>
        <source>No column of the import is called “%1”: say what it stands for, or leave it out.</source>
        <translation>Keine Spalte des Imports heißt „%1“: Sagen Sie, was sie bedeutet, oder lassen Sie sie weg.</translation>
    </message>
    <message>
        <source>“%1” as %2</source>
        <translation>„%1“ als %2</translation>
    </message>
    <message>
        <source>Read headings as they seem to be meant: %1?</source>
        <translation>Überschriften so lesen, wie sie gemeint scheinen: %1?</translation>
    </message>
    <message>
        <source>Choose a file whose first line has headings, such as Name, Code and Phone.</source>
        <translation>Wählen Sie eine Datei, deren erste Zeile Überschriften hat, etwa Name, Code und Phone.</translation>
    </message>
    <message>
        <source>No row has what is looked for.</source>
        <translation>Keine Zeile hat, was gesucht wird.</translation>
    </message>
    <message>
        <source>“%1” left out</source>
        <translation>„%1“ weglassen</translation>
    </message>
</context>
<context>
    <name>qorhost::ImportTableModel</name>
    <message>
        <source>refused</source>
        <translation>abgelehnt</translation>
    </message>
    <message>
        <source>taken in part</source>
        <translation>zum Teil übernommen</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Prüfung</translation>
    </message>
    <message>
        <source>(no heading)</source>
        <translation>(keine Überschrift)</translation>
    </message>
    <message>
        <source>%1 (left out)</source>
        <translation>%1 (weggelassen)</translation>
    </message>
</context>
<context>
    <name>qorhost::LeaseEndDialog</name>
    <message>
        <source>&amp;Free the cards at once</source>
        <translation>&amp;Karten sofort freigeben</translation>
    </message>
    <message>
        <source>&amp;Last day:</source>
        <translation>Let&amp;zter Tag:</translation>
    </message>
    <message>
        <source>&amp;End lease…</source>
        <translation>Mietzeit b&amp;eenden…</translation>
    </message>
</context>
<context>
    <name>qorhost::MainWindow</name>
    <message>
        <source>Check the store…</source>
        <translation>Bestand prüfen…</translation>
    </message>
    <message>
        <source>Unit:</source>
        <translation>Anlage:</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Anlage</translation>
    </message>
    <message>
        <source>Screens</source>
        <translation>Bildschirme</translation>
    </message>
    <message>
        <source>Store</source>
        <translation>Bestand</translation>
    </message>
    <message>
        <source>New…</source>
        <translation>Neu…</translation>
    </message>
    <message>
        <source>Open…</source>
        <translation>Öffnen…</translation>
    </message>
    <message>
        <source>Demo building</source>
        <translation>Demogebäude</translation>
    </message>
    <message>
        <source>Back up…</source>
        <translation>Sichern…</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>The language holds from the next start on.</source>
        <translation>Die Sprache gilt ab dem nächsten Start.</translation>
    </message>
    <message>
        <source>What you entered is not saved (%1). Leave it?</source>
        <translation>Was Sie eingegeben haben, ist nicht gespeichert (%1). Verlassen?</translation>
    </message>
    <message>
        <source>Opening the store</source>
        <translation>Der Bestand wird geöffnet</translation>
    </message>
    <message>
        <source>%1 cannot be opened.</source>
        <translation>%1 kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>The demo building cannot be opened.</source>
        <translation>Das Demogebäude kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Making the store</source>
        <translation>Der Bestand wird angelegt</translation>
    </message>
    <message>
        <source>No store can be made at %1.</source>
        <translation>In %1 kann kein Bestand angelegt werden.</translation>
    </message>
    <message>
        <source>%1 – %2</source>
        <translation>%1 – %2</translation>
    </message>
    <message>
        <source>Unit %1</source>
        <translation>Anlage %1</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Open a store</source>
        <translation>Bestand öffnen</translation>
    </message>
    <message>
        <source>Make a new store</source>
        <translation>Neuen Bestand anlegen</translation>
    </message>
    <message>
        <source>New store</source>
        <translation>Neuer Bestand</translation>
    </message>
    <message>
        <source>Put the demo building into it?</source>
        <translation>Soll das Demogebäude hineingelegt werden?</translation>
    </message>
    <message>
        <source>Making the demo building</source>
        <translation>Das Demogebäude wird angelegt</translation>
    </message>
    <message>
        <source>Cancelled. Nothing was opened.</source>
        <translation>Abgebrochen. Es wurde nichts geöffnet.</translation>
    </message>
    <message>
        <source>Reading the units</source>
        <translation>Die Anlagen werden gelesen</translation>
    </message>
    <message>
        <source>The units cannot be read.</source>
        <translation>Die Anlagen können nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Open server…</source>
        <translation>Server öffnen…</translation>
    </message>
    <message>
        <source>New from existing building…</source>
        <translation>Neu aus bestehendem Gebäude…</translation>
    </message>
    <message>
        <source>Restore a backup…</source>
        <translation>Sicherung wiederherstellen…</translation>
    </message>
    <message>
        <source>%1 was deleted.</source>
        <translation>%1 wurde gelöscht.</translation>
    </message>
    <message>
        <source>Somebody else has deleted it. The store has no other one.</source>
        <translation>Jemand anders hat sie gelöscht. Der Bestand hat keine andere.</translation>
    </message>
    <message>
        <source>Somebody else has deleted it. %1 is shown now.</source>
        <translation>Jemand anders hat sie gelöscht. Jetzt wird %1 gezeigt.</translation>
    </message>
    <message>
        <source>The store that was open the last time is not there: %1</source>
        <translation>Der Bestand, der das letzte Mal offen war, ist nicht da: %1</translation>
    </message>
</context>
<context>
    <name>qorhost::MergePage</name>
    <message>
        <source>Differences: %1, accepted: %2. The same on both sides: %3.</source>
        <translation>Unterschiede: %1, davon angenommen: %2. Auf beiden Seiten gleich: %3.</translation>
    </message>
    <message>
        <source>Choose the unit’s file</source>
        <translation>Datei der Anlage wählen</translation>
    </message>
    <message>
        <source>The unit’s file cannot be read.</source>
        <translation>Die Datei der Anlage kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>%1 is no unit file.</source>
        <translation>%1 ist keine Datei einer Anlage.</translation>
    </message>
    <message>
        <source>The unit’s file cannot be compared with the store.</source>
        <translation>Die Datei der Anlage kann nicht mit dem Bestand verglichen werden.</translation>
    </message>
    <message>
        <source>No file is chosen.</source>
        <translation>Keine Datei ist gewählt.</translation>
    </message>
    <message>
        <source>Nothing is merged with bad lines: mend the file, or leave them out.</source>
        <translation>Mit fehlerhaften Zeilen wird nichts abgeglichen: Berichtigen Sie die Datei, oder lassen Sie sie weg.</translation>
    </message>
    <message>
        <source>The file has no end line, as files of an older version: whether it is whole cannot be told.</source>
        <translation>Die Datei hat keine Schlusszeile, wie Dateien einer älteren Version: Ob sie vollständig ist, lässt sich nicht sagen.</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>Feld</translation>
    </message>
    <message>
        <source>Store</source>
        <translation>Bestand</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Anlage</translation>
    </message>
    <message>
        <source>The unit and the store have the same %1 directory codes.</source>
        <translation>Anlage und Bestand haben dieselben %1 Rufcodes.</translation>
    </message>
    <message>
        <source>Of the unit’s %1 directory codes will be deleted: %2. Go on?</source>
        <translation>Von den %1 Rufcodes der Anlage werden gelöscht: %2. Fortfahren?</translation>
    </message>
    <message>
        <source>The differences cannot be made.</source>
        <translation>Die Unterschiede können nicht übernommen werden.</translation>
    </message>
    <message>
        <source>Added: %1. Changed: %2. Deleted: %3. Tenants without a code now: %4. Steps withdrawn: %5.</source>
        <translation>Hinzugefügt: %1. Geändert: %2. Gelöscht: %3. Mieter jetzt ohne Code: %4. Zurückgenommene Schritte: %5.</translation>
    </message>
    <message>
        <source>Choose a difference to see both sides.</source>
        <translation>Wählen Sie einen Unterschied, um beide Seiten zu sehen.</translation>
    </message>
    <message>
        <source>Choose the file that was read from the unit: what it has otherwise than the store is listed here.</source>
        <translation>Wählen Sie die Datei, die aus der Anlage gelesen wurde: Was dort anders ist als im Bestand, wird hier aufgelistet.</translation>
    </message>
    <message>
        <source>There is nothing to accept.</source>
        <translation>Es gibt nichts anzunehmen.</translation>
    </message>
</context>
<context>
    <name>qorhost::MergeTableModel</name>
    <message>
        <source>add</source>
        <translation>hinzufügen</translation>
    </message>
    <message>
        <source>change</source>
        <translation>ändern</translation>
    </message>
    <message>
        <source>delete</source>
        <translation>löschen</translation>
    </message>
    <message>
        <source>accepted</source>
        <translation>angenommen</translation>
    </message>
    <message>
        <source>not accepted</source>
        <translation>nicht angenommen</translation>
    </message>
    <message>
        <source>Accept</source>
        <translation>Annehmen</translation>
    </message>
    <message>
        <source>In the store</source>
        <translation>Im Bestand</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>What differs or is lost</source>
        <translation>Was abweicht oder verloren geht</translation>
    </message>
</context>
<context>
    <name>qorhost::MovingDialog</name>
    <message>
        <source>New from existing building</source>
        <translation>Neu aus bestehendem Gebäude</translation>
    </message>
    <message>
        <source>What is odd in the file</source>
        <translation>Was an der Datei auffällt</translation>
    </message>
    <message>
        <source>&amp;Units:</source>
        <translation>An&amp;lagen:</translation>
    </message>
    <message>
        <source>Save &amp;report…</source>
        <translation>&amp;Bericht speichern…</translation>
    </message>
    <message>
        <source>&amp;Make the store…</source>
        <translation>Bestand &amp;anlegen…</translation>
    </message>
    <message>
        <source>Make it on a &amp;server…</source>
        <translation>Auf einem &amp;Server anlegen…</translation>
    </message>
    <message>
        <source>&amp;Code page of the texts:</source>
        <translation>&amp;Codepage der Texte:</translation>
    </message>
    <message>
        <source>%1, as the file says</source>
        <translation>%1, wie die Datei sagt</translation>
    </message>
    <message>
        <source>The file seems to be open elsewhere, for %1 stands beside it: what has not been written yet is not in it.</source>
        <translation>Die Datei scheint anderswo offen zu sein, denn neben ihr steht %1: Was noch nicht geschrieben ist, steht nicht in ihr.</translation>
    </message>
    <message>
        <source>All units</source>
        <translation>Alle Anlagen</translation>
    </message>
    <message>
        <source>Unit %1</source>
        <translation>Anlage %1</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>%1: %2 units, %3 tenants, %4 credentials, %5 directory codes to bring in; %6 rows refused, %7 cells adjusted, %8 kept as odd.</source>
        <translation>%1: %2 Anlagen, %3 Mieter, %4 Ausweise, %5 Rufcodes zu übernehmen; %6 Zeilen abgelehnt, %7 Felder angepasst, %8 auffällige belassen.</translation>
    </message>
    <message>
        <source>Some rows cannot be brought in: mend them in the other application, or leave them out.</source>
        <translation>Einige Zeilen können nicht übernommen werden: Berichtigen Sie sie in der anderen Anwendung, oder lassen Sie sie weg.</translation>
    </message>
    <message>
        <source>Save what is odd</source>
        <translation>Auffälligkeiten speichern</translation>
    </message>
    <message>
        <source>Tables (*.csv)</source>
        <translation>Tabellen (*.csv)</translation>
    </message>
    <message>
        <source>The report is not saved.</source>
        <translation>Der Bericht ist nicht gespeichert.</translation>
    </message>
    <message>
        <source>&amp;Leave out the refused rows (%1)</source>
        <translation>Die abgelehnten Zeilen &amp;weglassen (%1)</translation>
    </message>
    <message>
        <source>%1, for the file says none that is known</source>
        <translation>%1, denn die Datei sagt keine, die bekannt ist</translation>
    </message>
</context>
<context>
    <name>qorhost::OverviewPage</name>
    <message>
        <source>Unit %1</source>
        <translation>Anlage %1</translation>
    </message>
    <message>
        <source>Unit %1, %2</source>
        <translation>Anlage %1, %2</translation>
    </message>
    <message>
        <source>no step waits for the unit</source>
        <translation>kein Schritt wartet auf die Anlage</translation>
    </message>
    <message>
        <source>one step waits for the unit</source>
        <translation>ein Schritt wartet auf die Anlage</translation>
    </message>
    <message>
        <source>%1 steps wait for the unit</source>
        <translation>%1 Schritte warten auf die Anlage</translation>
    </message>
    <message>
        <source>%1 codes in use; the capacity is unknown</source>
        <translation>%1 Codes in Gebrauch; die Kapazität ist unbekannt</translation>
    </message>
    <message>
        <source>%1 of %2 codes in use</source>
        <translation>%1 von %2 Codes in Gebrauch</translation>
    </message>
    <message>
        <source>Ends</source>
        <translation>Endet</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Anlage</translation>
    </message>
    <message>
        <source>The overview cannot be shown.</source>
        <translation>Die Übersicht kann nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>%1 credentials, %2 directory codes; %3</source>
        <translation>%1 Ausweise, %2 Rufcodes; %3</translation>
    </message>
    <message>
        <source>Tenant</source>
        <translation>Mieter</translation>
    </message>
    <message>
        <source>Directory code</source>
        <translation>Rufcode</translation>
    </message>
    <message>
        <source>Nothing ends within 30 days.</source>
        <translation>Innerhalb von 30 Tagen endet nichts.</translation>
    </message>
    <message>
        <source>The store has no units yet. The screen “Units” makes the first one.</source>
        <translation>Der Bestand hat noch keine Anlagen. Der Bildschirm „Anlagen“ macht die erste.</translation>
    </message>
    <message>
        <source>%1: %2 too many</source>
        <translation>%1: %2 zu viel</translation>
    </message>
</context>
<context>
    <name>qorhost::PageStack</name>
    <message>
        <source>it was cancelled.</source>
        <translation>es wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Opening %1</source>
        <translation>%1 wird geöffnet</translation>
    </message>
    <message>
        <source>%1 cannot be shown: %2</source>
        <translation>%1 kann nicht angezeigt werden: %2</translation>
    </message>
    <message>
        <source>The store has no units yet: this screen shows what is in one. The screen “Units” makes the first one.</source>
        <translation>Der Bestand hat noch keine Anlagen: Dieser Bildschirm zeigt, was in einer ist. Der Bildschirm „Anlagen“ macht die erste.</translation>
    </message>
</context>
<context>
    <name>qorhost::ReportPage</name>
    <message>
        <source>1 row</source>
        <translation>1 Zeile</translation>
    </message>
    <message>
        <source>%1 rows</source>
        <translation>%1 Zeilen</translation>
    </message>
    <message>
        <source>The report cannot be shown.</source>
        <translation>Der Bericht kann nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>Values go into the statement as they are: write a quote in one twice, and ask for a name and for none in two reports.</source>
        <translation>Werte gehen so in die Anweisung, wie sie sind: Schreiben Sie ein Anführungszeichen in einem doppelt, und fragen Sie nach einem Namen und nach keinem in zwei Berichten.</translation>
    </message>
    <message>
        <source>%1 – %2</source>
        <translation>%1 – %2</translation>
    </message>
    <message>
        <source>Wrote %1 to %2.</source>
        <translation>%1 nach %2 geschrieben.</translation>
    </message>
    <message>
        <source>Write the rows to a file</source>
        <translation>Zeilen in eine Datei schreiben</translation>
    </message>
    <message>
        <source>Write the report as PDF</source>
        <translation>Bericht als PDF schreiben</translation>
    </message>
    <message>
        <source>Printed %1.</source>
        <translation>%1 gedruckt.</translation>
    </message>
    <message>
        <source>Delete the chosen credential?</source>
        <translation>Den gewählten Ausweis löschen?</translation>
    </message>
    <message>
        <source>Delete the %1 chosen credentials?</source>
        <translation>Die %1 gewählten Ausweise löschen?</translation>
    </message>
    <message>
        <source>Deleting credentials</source>
        <translation>Ausweise werden gelöscht</translation>
    </message>
    <message>
        <source>Deleted %1 of %2 credentials.</source>
        <translation>%1 von %2 Ausweisen gelöscht.</translation>
    </message>
    <message>
        <source>and</source>
        <translation>und</translation>
    </message>
    <message>
        <source>No row meets the conditions.</source>
        <translation>Keine Zeile erfüllt die Bedingungen.</translation>
    </message>
    <message>
        <source>Writing the report</source>
        <translation>Der Bericht wird geschrieben</translation>
    </message>
    <message>
        <source>Printing the report</source>
        <translation>Der Bericht wird gedruckt</translation>
    </message>
</context>
<context>
    <name>qorhost::ScreenPage</name>
    <message>
        <source>somebody</source>
        <translation>jemand</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>In Arbeit</translation>
    </message>
    <message>
        <source>Cancelled behind the change, which is stored. F5 shows it.</source>
        <translation>Abgebrochen nach der Änderung, die gespeichert ist. F5 zeigt sie.</translation>
    </message>
    <message>
        <source>Cancelled. Nothing was changed.</source>
        <translation>Abgebrochen. Nichts wurde geändert.</translation>
    </message>
    <message>
        <source>This cannot be entered.</source>
        <translation>Das kann nicht eingegeben werden.</translation>
    </message>
    <message>
        <source>Nothing was changed.</source>
        <translation>Nichts wurde geändert.</translation>
    </message>
    <message>
        <source>It is not known whether it was stored.</source>
        <translation>Es ist nicht bekannt, ob es gespeichert wurde.</translation>
    </message>
    <message>
        <source>%1. What you entered is still there: look at it and try again.</source>
        <translation>%1. Was Sie eingegeben haben, ist noch da: Sehen Sie es an und versuchen Sie es noch einmal.</translation>
    </message>
</context>
<context>
    <name>qorhost::StartPage</name>
    <message>
        <source>No store is open.</source>
        <translation>Kein Bestand ist geöffnet.</translation>
    </message>
    <message>
        <source>Try the &amp;demo building</source>
        <translation>&amp;Demogebäude ausprobieren</translation>
    </message>
    <message>
        <source>Three units with tenants, credentials and directory codes, in memory: nothing of it is kept.</source>
        <translation>Drei Anlagen mit Mietern, Ausweisen und Rufcodes, im Arbeitsspeicher: Nichts davon bleibt.</translation>
    </message>
    <message>
        <source>&amp;Open a store…</source>
        <translation>Bestand ö&amp;ffnen…</translation>
    </message>
    <message>
        <source>The file of a building that was set up before.</source>
        <translation>Die Datei eines Gebäudes, das schon eingerichtet ist.</translation>
    </message>
    <message>
        <source>Make a &amp;new store…</source>
        <translation>&amp;Neuen Bestand anlegen…</translation>
    </message>
    <message>
        <source>An empty file for a building, or one with the demo building in it.</source>
        <translation>Eine leere Datei für ein Gebäude oder eine mit dem Demogebäude darin.</translation>
    </message>
    <message>
        <source>New from an &amp;existing building…</source>
        <translation>Neu aus &amp;bestehendem Gebäude…</translation>
    </message>
    <message>
        <source>A store of what another application keeps in a desktop database file.</source>
        <translation>Ein Bestand aus dem, was eine andere Anwendung in einer Desktop-Datenbank führt.</translation>
    </message>
    <message>
        <source>Open a store on a &amp;server…</source>
        <translation>Bestand auf einem &amp;Server öffnen…</translation>
    </message>
    <message>
        <source>A building that several seats work on, on a database server.</source>
        <translation>Ein Gebäude, an dem mehrere Plätze arbeiten, auf einem Datenbankserver.</translation>
    </message>
</context>
<context>
    <name>qorhost::StepsPage</name>
    <message>
        <source>The steps cannot be shown.</source>
        <translation>Die Schritte können nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>Write the steps to a file</source>
        <translation>Schritte in eine Datei schreiben</translation>
    </message>
    <message>
        <source>Wrote %1 steps to %2. Mark them as sent when the unit has them.</source>
        <translation>%1 Schritte nach %2 geschrieben. Markieren Sie sie als gesendet, wenn die Anlage sie hat.</translation>
    </message>
    <message>
        <source>Mark the chosen steps as sent (%1)?</source>
        <translation>Die gewählten Schritte (%1) als gesendet markieren?</translation>
    </message>
    <message>
        <source>Marked as sent: %1.</source>
        <translation>Als gesendet markiert: %1.</translation>
    </message>
    <message>
        <source>No step waits for the unit.</source>
        <translation>Kein Schritt wartet auf die Anlage.</translation>
    </message>
    <message>
        <source>Mark the steps that are shown as sent (%1)?</source>
        <translation>Die angezeigten Schritte als gesendet markieren (%1)?</translation>
    </message>
    <message>
        <source>Mark the steps that were written to a file as sent (%1)?</source>
        <translation>Die in eine Datei geschriebenen Schritte als gesendet markieren (%1)?</translation>
    </message>
    <message>
        <source>No step is shown.</source>
        <translation>Kein Schritt wird angezeigt.</translation>
    </message>
    <message>
        <source>Writing the steps</source>
        <translation>Die Schritte werden geschrieben</translation>
    </message>
    <message>
        <source>Marking the steps</source>
        <translation>Die Schritte werden markiert</translation>
    </message>
</context>
<context>
    <name>qorhost::TenantCreatingPage</name>
    <message>
        <source>The screen cannot be shown.</source>
        <translation>Der Bildschirm kann nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>Creating tenants</source>
        <translation>Mieter werden angelegt</translation>
    </message>
    <message>
        <source>Created %1 tenants with %2 to %3.</source>
        <translation>%1 Mieter mit %2 bis %3 angelegt.</translation>
    </message>
</context>
<context>
    <name>qorhost::TenantsPage</name>
    <message>
        <source>Tenant</source>
        <translation>Mieter</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>Feld</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Vorher</translation>
    </message>
    <message>
        <source>After</source>
        <translation>Nachher</translation>
    </message>
    <message>
        <source>1 tenant</source>
        <translation>1 Mieter</translation>
    </message>
    <message>
        <source>%1 tenants</source>
        <translation>%1 Mieter</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>The tenants cannot be shown.</source>
        <translation>Die Mieter können nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>New tenant</source>
        <translation>Neuer Mieter</translation>
    </message>
    <message>
        <source>Saving the tenant</source>
        <translation>Der Mieter wird gespeichert</translation>
    </message>
    <message>
        <source>Added tenant %1.</source>
        <translation>Mieter %1 hinzugefügt.</translation>
    </message>
    <message>
        <source> Held by nobody then: %1.</source>
        <translation> Niemand hat dann noch: %1.</translation>
    </message>
    <message>
        <source>It is stored so already.</source>
        <translation>Es ist schon so gespeichert.</translation>
    </message>
    <message>
        <source>Changed %1.</source>
        <translation>%1 geändert.</translation>
    </message>
    <message>
        <source>Changed %1. Held by nobody now: %2.</source>
        <translation>%1 geändert. Niemand hat jetzt noch: %2.</translation>
    </message>
    <message>
        <source>Changing the tenants</source>
        <translation>Die Mieter werden geändert</translation>
    </message>
    <message>
        <source>%1 will be changed.</source>
        <translation>%1 werden geändert.</translation>
    </message>
    <message>
        <source>&amp;Change</source>
        <translation>&amp;Ändern</translation>
    </message>
    <message>
        <source>The lease of %1 ends.</source>
        <translation>Die Mietzeit von %1 endet.</translation>
    </message>
    <message>
        <source>Ending leases</source>
        <translation>Mietzeiten werden beendet</translation>
    </message>
    <message>
        <source>The lease of %1 will end.</source>
        <translation>Die Mietzeit von %1 wird enden.</translation>
    </message>
    <message>
        <source>&amp;End lease</source>
        <translation>Mietzeit &amp;beenden</translation>
    </message>
    <message>
        <source>Delete %1: %2?
The unit is told to forget them, and their cards are free.</source>
        <translation>%1 löschen: %2?
Die Anlage bekommt gesagt, dass sie sie vergisst, und ihre Karten sind frei.</translation>
    </message>
    <message>
        <source>Deleting tenants</source>
        <translation>Mieter werden gelöscht</translation>
    </message>
    <message>
        <source>Deleted %1.</source>
        <translation>%1 gelöscht.</translation>
    </message>
    <message>
        <source>The unit has no tenants yet. Enter the first one beside this list, and press Save.</source>
        <translation>Die Anlage hat noch keine Mieter. Geben Sie den ersten neben dieser Liste ein, und drücken Sie „Speichern“.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>The tenants are shown as they are now. Look at them and try again.</source>
        <translation>Die Mieter werden gezeigt, wie sie jetzt sind. Sehen Sie sie an und versuchen Sie es noch einmal.</translation>
    </message>
</context>
<context>
    <name>qorhost::UnitsPage</name>
    <message>
        <source>Unit %1</source>
        <translation>Anlage %1</translation>
    </message>
    <message>
        <source>Unit %1, %2</source>
        <translation>Anlage %1, %2</translation>
    </message>
    <message>
        <source>tenants: %1</source>
        <translation>Mieter: %1</translation>
    </message>
    <message>
        <source>credentials: %1</source>
        <translation>Ausweise: %1</translation>
    </message>
    <message>
        <source>directory codes: %1</source>
        <translation>Rufcodes: %1</translation>
    </message>
    <message>
        <source>steps that wait: %1</source>
        <translation>wartende Schritte: %1</translation>
    </message>
    <message>
        <source>The units cannot be shown.</source>
        <translation>Die Anlagen können nicht angezeigt werden.</translation>
    </message>
    <message>
        <source>New unit</source>
        <translation>Neue Anlage</translation>
    </message>
    <message>
        <source>Saving the unit</source>
        <translation>Die Anlage wird gespeichert</translation>
    </message>
    <message>
        <source>%1 Change it for all of them?</source>
        <translation>%1 Für alle ändern?</translation>
    </message>
    <message>
        <source>%1 is stored so already.</source>
        <translation>%1 ist schon so gespeichert.</translation>
    </message>
    <message>
        <source>Saved: %1.</source>
        <translation>Gespeichert: %1.</translation>
    </message>
    <message>
        <source>The unit cannot be read.</source>
        <translation>Die Anlage kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Delete %1?</source>
        <translation>%1 löschen?</translation>
    </message>
    <message>
        <source>Delete %1 with all that is in it (%2)?</source>
        <translation>%1 mit allem löschen, was darin ist (%2)?</translation>
    </message>
    <message>
        <source>Deleting the unit</source>
        <translation>Die Anlage wird gelöscht</translation>
    </message>
    <message>
        <source>Deleted: %1.</source>
        <translation>Gelöscht: %1.</translation>
    </message>
</context>
<context>
    <name>qorhost::ViewMenu</name>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Text at %1 %</source>
        <translation>Text mit %1 %</translation>
    </message>
</context>
</TS>
