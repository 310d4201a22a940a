// The peer of the redaction benchmark: the same job in MuPDF.js under Node — find every sensitive
// term, put a Redact annotation on each match, apply, save with garbage collection.
// Usage: node peer_redact.mjs IN.pdf OUT.pdf TERMS.json; prints the number of matches.
import * as fs from "node:fs";
import * as mupdf from "mupdf";

const [input, output, termsFile] = process.argv.slice(2);
const terms = JSON.parse(fs.readFileSync(termsFile, "utf8"));
const doc = mupdf.Document.openDocument(fs.readFileSync(input), "application/pdf");
let matches = 0;
for (let number = 0; number < doc.countPages(); ++number) {
    const page = doc.loadPage(number);
    for (const term of terms) {
        for (const hit of page.search(term)) {
            const annot = page.createAnnotation("Redact");
            annot.setQuadPoints(hit);
            ++matches;
        }
    }
    page.applyRedactions(true, 2);
}
fs.writeFileSync(output, doc.saveToBuffer("garbage").asUint8Array());
console.log(matches);
