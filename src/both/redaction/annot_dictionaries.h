// The entries this system writes into the annotations it makes: a highlight or redact annotation
// over a stored match, and a note pinned to a point with its popup. The entries are set in the
// order the page's reader expects them; nothing here touches a page.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/host_abi.h"

class PdfDictWriter;
struct SearchRecord;

enum class MatchAnnotKind { kHighlight, kRedact };

// Eight numbers per rectangle, corners lower left, lower right, upper left, upper right.
std::vector<float> QuadPointsOf(const std::vector<NdxRect>& rects);

// /Type /Subtype /Rect /F /QuadPoints /C [/IC] /Subj /P [/Contents] /NM of a match annotation.
// /IC is written for a redaction only, /Contents for a highlight only.
void WriteMatchAnnot(PdfDictWriter& dict, MatchAnnotKind kind, const SearchRecord& record,
                     NdxObject pageDict, const std::wstring& contents,
                     const std::wstring& uniqueIDName);

// A 20-point note whose upper left corner is the page's point (x, y), y counted down from the
// top of the page whose box has the upper y `pageTop`.
NdxRect NoteRectAt(float x, float y, float pageTop);

// The popup of a note: 180 by 120 at the page's right edge (`pageWidth`, the box's upper x), its
// bottom at the request's unflipped y, neither below 0. All zero when the page gives no width.
NdxRect PopupRectFor(float y, std::optional<float> pageWidth);

// /Type /Subtype /Name /Rect /F /C /P /Contents /NM of a note.
void WriteNote(PdfDictWriter& dict, const NdxRect& rect, NdxObject pageDict,
               const std::wstring& contents, const std::wstring& uniqueIDName);

// /Rect /Type /Subtype /P of a note's popup; /P points to the note's own dictionary.
void WritePopup(PdfDictWriter& dict, const NdxRect& rect, NdxObject noteDict);
