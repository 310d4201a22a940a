#!/usr/bin/env python3
"""Writes the recall benchmark's corpus: PDF documents with personal data planted in them at
known places, and beside each a labels file (NAME.json) that lists every planted value by kind.

The documents vary what makes detection hard: layout (letters, forms, tables, two columns,
running prose), font (standard and embedded TrueType, serif, sans, monospaced), size, alignment
(justified, ragged, spaced-out letters), language (English, German, French, Spanish; people from
Dutch speaking countries named too), and distractors that look like personal data and are not
(invalid check digits, unissued ranges, order numbers, amounts, plain dates, street names without
numbers, organisations).

Usage: make_corpus.py OUT_DIR [--seed N] [--documents N]
Needs ReportLab (Debian: python3-reportlab). The same seed writes the same values."""
import argparse
import json
import pathlib
import random
import sys

from reportlab.lib.enums import TA_JUSTIFY, TA_LEFT
from reportlab.lib.pagesizes import A4, LETTER
from reportlab.lib.styles import ParagraphStyle
from reportlab.lib.units import mm
from reportlab.pdfbase import pdfmetrics
from reportlab.pdfbase.ttfonts import TTFont
from reportlab.platypus import (BaseDocTemplate, Frame, PageTemplate, Paragraph, Spacer, Table,
                                TableStyle)
from xml.sax.saxutils import escape

DEJAVU = pathlib.Path("/usr/share/fonts/truetype/dejavu")


def register_fonts():
    fonts = ["Helvetica", "Times-Roman", "Courier"]
    for name, file in (("DejaVuSans", "DejaVuSans.ttf"), ("DejaVuSerif", "DejaVuSerif.ttf"),
                       ("DejaVuSansCondensed", "DejaVuSansCondensed.ttf")):
        if (DEJAVU / file).exists():
            pdfmetrics.registerFont(TTFont(name, str(DEJAVU / file)))
            fonts.append(name)
    return fonts


# --- values, each valid by its own rules ---------------------------------------------------

FIRST = {
    "en": ["Sarah", "James", "Emily", "Michael", "Olivia", "Daniel", "Hannah", "Robert", "Laura",
           "Thomas", "Rachel", "David", "Sophie", "Andrew", "Grace", "Peter", "Megan", "Richard"],
    "de": ["Jürgen", "Anna", "Klaus", "Katrin", "Stefan", "Monika", "Lukas", "Sabine", "Matthias"],
    "fr": ["Élodie", "Julien", "Camille", "Nicolas", "Margaux", "Antoine", "Chloé", "Mathieu"],
    "es": ["Alejandro", "Lucía", "Javier", "Carmen", "Pablo", "Isabel", "Sergio", "Marta"],
}
LAST = {
    "en": ["Mitchell", "Whitfield", "Harrison", "Turner", "Bennett", "Collins", "Hughes", "Parker",
           "Fletcher", "Morgan", "Reynolds", "Sullivan", "Campbell", "Foster", "Graham", "Walsh"],
    "de": ["Hoffmann", "Schneider", "Becker", "Wagner", "Schulz", "Krüger", "Neumann", "Fischer"],
    "fr": ["Marchand", "Lefèvre", "Dubois", "Moreau", "Girard", "Fournier", "Lambert", "Rousseau"],
    "es": ["García", "Fernández", "Ruiz", "Moreno", "Navarro", "Romero", "Torres", "Castillo"],
}
TITLES = {"en": ["Mr", "Ms", "Dr", "Mrs"], "de": ["Herr", "Frau"], "fr": ["M.", "Mme"],
          "es": ["Sr.", "Sra."]}
PHONES = {
    "en": ["020 7946 0958", "0161 496 0735", "0113 496 0822", "+44 20 7946 0321", "(212) 555-0147",
           "415-555-0132", "+1 646 555 0199", "(617) 555-0123", "312.555.0175", "07911 123456"],
    "de": ["030 12345678", "+49 30 901820", "0151 23456789", "089 1234567", "+49 151 2345 6789",
           "0221 4567890"],
    "fr": ["01 42 68 53 00", "06 12 34 56 78", "+33 1 42 68 53 00", "04 91 23 45 67",
           "07 81 23 45 67"],
    "es": ["912 345 678", "+34 612 345 678", "934 567 890"],
}
STREETS = {
    "en": [("{n} Baker Street", "London NW1 6XE"), ("{n} High Street", "Oxford OX1 4AJ"),
           ("{n} Kingsway", None), ("{n} Maple Avenue", "Springfield, IL 62704"),
           ("{n} Oak Lane", "Leeds LS1 4AP"), ("{n} Elm Drive", "Austin, TX 78701"),
           ("{n} Church Road", "Bristol BS8 1TH"), ("{n} Pine Court", "Denver, CO 80202")],
    "de": [("Hauptstraße {n}", "10115 Berlin"), ("Lindenallee {n}", "50968 Köln"),
           ("Goethestraße {n}", "80336 München"), ("Am Markt {n}", None),
           ("Berliner Straße {n}", "60311 Frankfurt am Main")],
    "fr": [("{n} rue de la Paix", "75002 Paris"), ("{n} avenue Victor Hugo", "69006 Lyon"),
           ("{n} boulevard Saint-Michel", "75005 Paris"), ("{n} rue des Lilas", "33000 Bordeaux")],
    "es": [("Calle Mayor {n}", "28013 Madrid"), ("Avenida de la Constitución {n}", "41004 Sevilla"),
           ("Calle de Alcalá {n}", "28014 Madrid")],
}
MONTHS = {
    "en": ["January", "February", "March", "April", "May", "June", "July", "August", "September",
           "October", "November", "December"],
    "de": ["Januar", "Februar", "März", "April", "Mai", "Juni", "Juli", "August", "September",
           "Oktober", "November", "Dezember"],
    "fr": ["janvier", "février", "mars", "avril", "mai", "juin", "juillet", "août", "septembre",
           "octobre", "novembre", "décembre"],
    "es": ["enero", "febrero", "marzo", "abril", "mayo", "junio", "julio", "agosto", "septiembre",
           "octubre", "noviembre", "diciembre"],
}


def luhn_digit(body):
    total = 0
    for i, c in enumerate(reversed(body)):
        d = int(c)
        if i % 2 == 0:
            d *= 2
            if d > 9:
                d -= 9
        total += d
    return str((10 - total % 10) % 10)


def card(rng, valid=True):
    prefix, length = rng.choice([("4", 16), ("51", 16), ("55", 16), ("37", 15), ("6011", 16)])
    body = prefix + "".join(rng.choice("0123456789") for _ in range(length - len(prefix) - 1))
    check = luhn_digit(body)
    if not valid:
        check = str((int(check) + 1 + rng.randrange(8)) % 10)
    digits = body + check
    if length == 15:
        groups = [digits[:4], digits[4:10], digits[10:]]
    else:
        groups = [digits[i:i + 4] for i in range(0, 16, 4)]
    return rng.choice([" ", "-", " "]).join(groups) if rng.random() < 0.85 else digits


def iban_mod(text):
    return int("".join(str(int(c, 36)) for c in text)) % 97


def iban(rng, valid=True):
    country, shape = rng.choice([("DE", "n18"), ("GB", "a4n14"), ("FR", "n23"), ("ES", "n20"),
                                 ("NL", "a4n10")])
    bban = ""
    for part in (shape.split("n")[0], "n" + shape.split("n")[1]):
        if part.startswith("a"):
            bban += "".join(rng.choice("ABCDEFGHIJKLMNOPQRSTUVWXYZ") for _ in range(int(part[1:])))
        elif part.startswith("n"):
            bban += "".join(rng.choice("0123456789") for _ in range(int(part[1:])))
    check = 98 - iban_mod(bban + country + "00")
    if not valid:
        check = (check + 1 + rng.randrange(90)) % 97 + 2
    compact = "%s%02d%s" % (country, check, bban)
    if rng.random() < 0.7:
        return " ".join(compact[i:i + 4] for i in range(0, len(compact), 4))
    return compact


def ssn(rng, valid=True):
    if valid:
        area = rng.choice([a for a in range(1, 900) if a != 666])
        group, serial = rng.randrange(1, 100), rng.randrange(1, 10000)
    else:
        area, group, serial = rng.choice([(666, 12, 3456), (0, 45, 1234), (912, 34, 5678),
                                          (123, 0, 4567), (321, 45, 0)])
    return "%03d-%02d-%04d" % (area, group, serial)


def nino(rng):
    first = "ABCEGHJKLMNOPRSTWXYZ"
    second = "ABCEGHJKLMNPRSTWXYZ"
    while True:
        prefix = rng.choice(first) + rng.choice(second)
        if prefix not in ("BG", "GB", "KN", "NK", "NT", "TN", "ZZ"):
            break
    digits = "%06d" % rng.randrange(1000000)
    suffix = rng.choice("ABCD")
    if rng.random() < 0.5:
        return "%s %s %s %s %s" % (prefix, digits[:2], digits[2:4], digits[4:], suffix)
    return prefix + digits + suffix


def passport(rng, lang):
    if lang == "de":
        letters = "CFGHJKLMNPRTVWXYZ0123456789"
        return rng.choice("CFGHJK") + "".join(rng.choice(letters) for _ in range(8))
    if lang == "fr":
        return "%02d%s%05d" % (rng.randrange(100), "".join(rng.choice("ABCDEFGHJKLMNPRSTUVWXYZ")
                                                           for _ in range(2)), rng.randrange(100000))
    return "%09d" % rng.randrange(100000000, 999999999)


def record(rng, lang):
    """A record number's label and value; "#5" in a template stands for five random digits."""
    label, template = rng.choice({
        "en": [("Employee ID", "EMP-#5"), ("Customer number", "CU/2023/#5"),
               ("Case reference", "2024-CV-#5"), ("Account number", "#8"),
               ("Policy number", "POL-#6"), ("Member ID", "M#7"), ("Patient ID", "PT#6")],
        "de": [("Kundennummer", "KD-#6"), ("Personalnummer", "#7"), ("Aktenzeichen", "#5/24")],
        "fr": [("Numéro de client", "#7"), ("Numéro de dossier", "D-#6")],
        "es": [("Número de cliente", "#8"), ("Número de expediente", "EXP-#5")],
    }[lang])
    head, _, rest = template.partition("#")
    count, tail = int(rest[0]), rest[1:]
    return label, head + "".join(rng.choice("0123456789") for _ in range(count)) + tail


def birth_date(rng, lang):
    year, month, day = rng.randrange(1940, 2005), rng.randrange(1, 13), rng.randrange(1, 29)
    forms = {
        "en": ["%02d/%02d/%d" % (day, month, year), "%d-%02d-%02d" % (year, month, day),
               "%d %s %d" % (day, MONTHS["en"][month - 1], year),
               "%s %d, %d" % (MONTHS["en"][month - 1], day, year)],
        "de": ["%02d.%02d.%d" % (day, month, year), "%d. %s %d" % (day, MONTHS["de"][month - 1], year)],
        "fr": ["%02d/%02d/%d" % (day, month, year), "%d %s %d" % (day, MONTHS["fr"][month - 1], year)],
        "es": ["%02d/%02d/%d" % (day, month, year), "%d de %s de %d" % (day, MONTHS["es"][month - 1], year)],
    }[lang]
    return rng.choice(forms)


CUES = {
    "en": {"dob": ["Date of birth", "DOB", "Born"], "passport": ["Passport No.", "Passport number"],
           "phone": ["Tel.", "Phone", "Mobile"], "email": ["E-mail", "Email"], "address": ["Address"],
           "name": ["Name", "Full name"], "ssn": ["SSN", "Social Security No."], "nino": ["NI number"],
           "iban": ["IBAN"], "card": ["Card number", "Card"]},
    "de": {"dob": ["Geburtsdatum", "geboren am"], "passport": ["Reisepass", "Passnummer"],
           "phone": ["Telefon", "Tel."], "email": ["E-Mail"], "address": ["Anschrift", "Adresse"],
           "name": ["Name"], "iban": ["IBAN"], "card": ["Kreditkarte"]},
    "fr": {"dob": ["Date de naissance", "née le"], "passport": ["Numéro de passeport", "Passeport"],
           "phone": ["Téléphone", "Tél."], "email": ["Courriel"], "address": ["Adresse"],
           "name": ["Nom"], "iban": ["IBAN"], "card": ["Carte"]},
    "es": {"dob": ["Fecha de nacimiento"], "passport": ["Pasaporte", "Número de pasaporte"],
           "phone": ["Teléfono", "Tel."], "email": ["Correo"], "address": ["Dirección"],
           "name": ["Nombre"], "iban": ["IBAN"], "card": ["Tarjeta"]},
}

# Text that looks like personal data and is not; never labelled.
DISTRACTORS = [
    "Invoice 4471-2290-1187 was paid on 3 May 2024 (EUR 1,250.00).",
    "Order no. 55821 ships from Northwind Traders Ltd in London and Paris.",
    "The card ending 4539 1488 0343 6468 was declined (check digit wrong).",
    "Reference 666-12-3456 is a test value and not a social security number.",
    "ISBN 978-3-16-148410-0, version 2.4.1, room 101 on floor 3, SKU-449-221.",
    "The Board of Directors met on Main Street in Springfield on Monday 12 March 2024.",
    "IBAN DE89 3704 0044 0532 0130 01 is malformed and was rejected.",
    "Meeting at 10:30, budget 1 250 000, ticket 2024/117, batch 20231104.",
    "Contact the Customer Service team of Acme Holdings for the Annual Report 2023.",
    "Quality Assurance reviewed sections 4.2 to 4.7 of the Safety Manual.",
]
DISTRACTORS_LANG = {
    "de": ["Die Rechnung 2024-118 über 1.250,00 EUR wurde am 3. Mai 2024 bezahlt.",
           "Der Vorstand der Nordwind GmbH tagte in Berlin und Hamburg."],
    "fr": ["La facture 2024-118 de 1 250,00 EUR a été réglée le 3 mai 2024.",
           "Le conseil de la Société Générale des Eaux s'est réuni à Lyon."],
    "es": ["La factura 2024-118 por 1.250,00 EUR se pagó el 3 de mayo de 2024.",
           "El consejo de Transportes del Norte se reunió en Madrid y Sevilla."],
}


class Person:
    """One person's planted values: (kind, value, text as printed with its label)."""

    def __init__(self, rng, lang):
        self.lang = lang
        self.first = rng.choice(FIRST[lang])
        self.last = rng.choice(LAST[lang])
        self.name = "%s %s" % (self.first, self.last)
        self.title = rng.choice(TITLES[lang])
        street, town = rng.choice(STREETS[lang])
        self.street = street.format(n=rng.randrange(1, 250))
        self.town = town
        self.phone = rng.choice(PHONES[lang])
        self.email = "%s.%s@%s" % (ascii_fold(self.first).lower(), ascii_fold(self.last).lower(),
                                   rng.choice(["example.com", "mail.example.org", "example.net"]))
        self.dob = birth_date(rng, lang)
        self.passport = passport(rng, lang)
        self.record_label, self.record = record(rng, lang)
        self.iban = iban(rng)
        self.card = card(rng)
        self.ssn = ssn(rng) if lang == "en" else None
        self.nino = nino(rng) if lang == "en" else None

    def address(self):
        return self.street if not self.town else "%s, %s" % (self.street, self.town)


def ascii_fold(text):
    import unicodedata
    return "".join(c for c in unicodedata.normalize("NFKD", text) if not unicodedata.combining(c))


class Document:
    """Collects paragraphs or table rows and the labels of what they plant."""

    def __init__(self, name, lang, rng):
        self.name, self.lang, self.rng = name, lang, rng
        self.labels = []

    def plant(self, kind, value):
        self.labels.append({"kind": kind, "value": value})
        return value

    def cue(self, kind):
        return self.rng.choice(CUES[self.lang][kind])

    def fields(self, person):
        """(kind, label, value) of each of a person's values, in random order; a caller plants
        those it prints."""
        p = person
        rows = [("name", self.cue("name"), p.name), ("dob", self.cue("dob"), p.dob),
                ("address", self.cue("address"), p.address()), ("phone", self.cue("phone"), p.phone),
                ("email", self.cue("email"), p.email), ("passport", self.cue("passport"), p.passport),
                ("recordNumber", p.record_label, p.record), ("iban", self.cue("iban"), p.iban),
                ("card", self.cue("card"), p.card)]
        if p.ssn:
            rows.append(("ssn", self.cue("ssn"), p.ssn))
        if p.nino:
            rows.append(("nino", self.cue("nino"), p.nino))
        self.rng.shuffle(rows)
        return rows

PROSE = {
    "en": [
        "Yesterday {name} called our office about the renewal.",
        "{name} confirmed the appointment and asked for a written summary.",
        "The file was handed over to {name}, who will review it next week.",
        "According to {name}, the documents arrived late.",
    ],
    "de": ["Gestern rief {title} {name} in unserem Büro an.",
           "Die Unterlagen wurden an {title} {name} übergeben."],
    "fr": ["Hier, {title} {name} a appelé notre bureau.",
           "Le dossier a été transmis à {title} {name} pour examen."],
    "es": ["Ayer {title} {name} llamó a nuestra oficina.",
           "El expediente se entregó a {title} {name} para su revisión."],
}
# Names of people from German, French, Spanish and Dutch speaking countries, less common in English
# text, written in running text of any language without a title or a label before them.
FOREIGN_FIRST = {
    "de": ["Wiebke", "Jörg", "Heike", "Uwe", "Dörte", "Gudrun", "Ingo", "Frauke", "Torsten"],
    "fr": ["Gwenaëlle", "Benoît", "Solène", "Aurélien", "Maëlys", "Thibault", "Ségolène", "Loïc"],
    "es": ["Begoña", "Iñaki", "Montserrat", "Nuria", "Ainhoa", "Joaquín", "Maite", "Rocío"],
    "nl": ["Joost", "Femke", "Sanne", "Thijs", "Maartje", "Wouter", "Lieke", "Sjoerd"],
}
FOREIGN_LAST = {
    "de": ["Brandstätter", "Kühnel", "Oberdorfer", "Wendtland", "Pöschl", "Hülsmann", "Vogelsang"],
    "fr": ["Lemaître", "Duchêne", "Vasseur", "Chevallier", "Tessier", "Perrin", "Goujon"],
    "es": ["Etxeberria", "Villanueva", "Santamaría", "Ibáñez", "Quintana", "Arrieta", "Cifuentes"],
    "nl": ["van den Berg", "de Vries", "Verhoeven", "Kuipers", "Dijkstra", "Hendriks", "Smit"],
}
PLAIN_PROSE = {
    "en": ["The draft was read by {name} before the meeting.",
           "On Tuesday {name} sent the revised figures to the team."],
    "de": ["Laut {name} kamen die Unterlagen zu spät.",
           "Am Dienstag schickte {name} die neuen Zahlen."],
    "fr": ["Selon {name}, les documents sont arrivés en retard.",
           "Mardi, {name} a envoyé les nouveaux chiffres."],
    "es": ["Según {name}, los documentos llegaron tarde.",
           "El martes {name} envió las nuevas cifras."],
}
LINKS = {
    "en": ["The {label} on file is {value}.", "Please note the {label}: {value}.",
           "We recorded the {label} {value} in our system."],
    "de": ["{label}: {value}.", "Wir haben {label} {value} vermerkt."],
    "fr": ["{label} : {value}.", "Nous avons noté : {label} {value}."],
    "es": ["{label}: {value}.", "Hemos registrado {label} {value}."],
}


def prose_of(doc, person):
    """Running text that mentions a person and their values, each with its label."""
    rng = doc.rng
    sentence = rng.choice(PROSE[doc.lang]).format(name=doc.plant("name", person.name),
                                                   title=person.title)
    parts = [sentence]
    for kind, label, value in [f for f in doc.fields(person) if f[0] != "name"][:5]:
        link = rng.choice(LINKS[doc.lang])
        if doc.lang == "en" and label not in ("IBAN", "SSN", "DOB"):
            label = label.lower()
        parts.append(link.format(label=label, value=doc.plant(kind, value)))
    # Someone from abroad, named in plain running text.
    origin = rng.choice(sorted(FOREIGN_FIRST))
    visitor = "%s %s" % (rng.choice(FOREIGN_FIRST[origin]), rng.choice(FOREIGN_LAST[origin]))
    parts.append(rng.choice(PLAIN_PROSE[doc.lang]).format(name=doc.plant("name", visitor)))
    return " ".join(parts)


def distractor(doc):
    pool = DISTRACTORS + DISTRACTORS_LANG.get(doc.lang, [])
    return doc.rng.choice(pool)


# --- layouts -------------------------------------------------------------------------------

def styles(rng, fonts):
    font = rng.choice(fonts)
    size = rng.choice([8.5, 9, 10, 11, 12])
    body = ParagraphStyle("body", fontName=font, fontSize=size, leading=size * 1.3,
                          alignment=rng.choice([TA_LEFT, TA_JUSTIFY]), spaceAfter=size * 0.6)
    if rng.random() < 0.2:
        body.wordSpace = 1.5
    return body


def para(text, style):
    return Paragraph(escape(text).replace("\n", "<br/>"), style)


def letter(doc, body):
    rng, lang = doc.rng, doc.lang
    sender, person = Person(rng, lang), Person(rng, lang)
    story = [para("%s\n%s" % (doc.plant("name", sender.name), sender.street), body)]
    if sender.town:
        story[-1] = para("%s\n%s\n%s" % (sender.name, sender.street, sender.town), body)
    doc.plant("address", sender.address())
    story.append(Spacer(1, 8 * mm))
    story.append(para("%s %s\n%s%s" % (person.title, doc.plant("name", person.name), person.street,
                                         "\n" + person.town if person.town else ""), body))
    doc.plant("address", person.address())
    greeting = {"en": "Dear %s %s,", "de": "Sehr geehrte(r) %s %s,", "fr": "Madame, Monsieur %s %s,",
                "es": "Estimado/a %s %s:"}[lang] % (person.title, person.last)
    story += [Spacer(1, 6 * mm), para(greeting, body), para(prose_of(doc, person), body),
              para(distractor(doc), body), para(prose_of(doc, Person(rng, lang)), body)]
    closing = {"en": "Yours sincerely,", "de": "Mit freundlichen Grüßen", "fr": "Cordialement,",
               "es": "Atentamente,"}[lang]
    story += [para(closing, body), para(sender.name, body)]
    return story


def form(doc, body):
    rng = doc.rng
    person = Person(rng, doc.lang)
    story = [para({"en": "Application form", "de": "Antragsformular", "fr": "Formulaire de demande",
                   "es": "Formulario de solicitud"}[doc.lang].upper(), body)]
    rows = [[para(label, body), para(doc.plant(kind, value), body)]
            for kind, label, value in doc.fields(person)]
    stacked = rng.random() < 0.3
    if stacked:
        # the label above its value, as on printed forms
        story += [para("%s\n%s" % (label, value), body) for label, value in
                  ((r[0].text, r[1].text) for r in rows)]
    else:
        table = Table(rows, colWidths=[55 * mm, 100 * mm])
        table.setStyle(TableStyle([("GRID", (0, 0), (-1, -1), 0.4, "grey"),
                                   ("VALIGN", (0, 0), (-1, -1), "TOP")]))
        story.append(table)
    story += [Spacer(1, 6 * mm), para(distractor(doc), body), para(distractor(doc), body)]
    return story


def register(doc, body):
    rng = doc.rng
    small = ParagraphStyle("small", parent=body, fontSize=min(body.fontSize, 8), leading=10)
    kinds = rng.choice([("name", "phone", "email", "recordNumber"), ("name", "dob", "iban"),
                        ("name", "address", "passport")])
    heads = {"name": "Name", "phone": "Phone", "email": "E-mail", "recordNumber": "Employee ID",
             "dob": "Date of birth", "iban": "IBAN", "address": "Address", "passport": "Passport No."}
    rows = [[para(heads[k], small) for k in kinds]]
    for _ in range(rng.randrange(8, 16)):
        p = Person(rng, doc.lang)
        values = {"name": p.name, "phone": p.phone, "email": p.email,
                  "recordNumber": "EMP-%05d" % rng.randrange(100000), "dob": p.dob, "iban": p.iban,
                  "address": p.address(), "passport": p.passport}
        rows.append([para(doc.plant(k, values[k]), small) for k in kinds])
    widths = {"name": 40, "phone": 35, "email": 60, "recordNumber": 25, "dob": 30, "iban": 70,
              "address": 80, "passport": 30}
    table = Table(rows, colWidths=[widths[k] * mm for k in kinds], repeatRows=1)
    table.setStyle(TableStyle([("LINEBELOW", (0, 0), (-1, 0), 0.6, "black"),
                               ("VALIGN", (0, 0), (-1, -1), "TOP")]))
    return [para("Staff register" if doc.lang == "en" else "Register", body), table,
            Spacer(1, 4 * mm), para(distractor(doc), body)]


def newsletter(doc, body):
    rng = doc.rng
    story = [para({"en": "Community newsletter", "de": "Mitteilungsblatt", "fr": "Lettre d'information",
                   "es": "Boletín"}[doc.lang], body)]
    for _ in range(rng.randrange(4, 7)):
        story.append(para(prose_of(doc, Person(rng, doc.lang)), body))
        story.append(para(distractor(doc), body))
    return story


LAYOUTS = {"letter": letter, "form": form, "register": register, "newsletter": newsletter}


def write_pdf(path, story, columns, pagesize):
    doc = BaseDocTemplate(str(path), pagesize=pagesize, leftMargin=18 * mm, rightMargin=18 * mm,
                          topMargin=18 * mm, bottomMargin=18 * mm)
    width = (doc.width - (columns - 1) * 6 * mm) / columns
    frames = [Frame(doc.leftMargin + i * (width + 6 * mm), doc.bottomMargin, width, doc.height,
                    id="c%d" % i) for i in range(columns)]
    doc.addPageTemplates([PageTemplate(id="page", frames=frames)])
    doc.build(story)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("out")
    parser.add_argument("--seed", type=int, default=15)
    parser.add_argument("--documents", type=int, default=24)
    args = parser.parse_args()
    out = pathlib.Path(args.out)
    out.mkdir(parents=True, exist_ok=True)
    fonts = register_fonts()
    rng = random.Random(args.seed)
    langs = ["en", "en", "en", "de", "fr", "es"]
    for index in range(args.documents):
        layout = list(LAYOUTS)[index % len(LAYOUTS)]
        lang = langs[(index // len(LAYOUTS) + index) % len(langs)]
        name = "%02d-%s-%s" % (index + 1, layout, lang)
        doc = Document(name, lang, random.Random(rng.random()))
        body = styles(doc.rng, fonts)
        story = LAYOUTS[layout](doc, body)
        columns = 2 if layout == "newsletter" or (layout == "letter" and doc.rng.random() < 0.3) else 1
        write_pdf(out / (name + ".pdf"), story, columns, doc.rng.choice([A4, LETTER]))
        labels = {"file": name + ".pdf", "language": lang, "layout": layout, "font": body.fontName,
                  "columns": columns, "values": doc.labels}
        (out / (name + ".json")).write_text(json.dumps(labels, ensure_ascii=False, indent=1) + "\n",
                                            encoding="utf-8")
    print("%d documents in %s" % (args.documents, out))
    return 0


if __name__ == "__main__":
    sys.exit(main())
