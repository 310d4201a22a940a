// BatchDocumentSession: what the save and close commands ask of a running batch session. The
// batch session implements it and enters itself in Brevan::batchSession while it exists.
#pragma once

class BatchDocumentSession {
  public:
    virtual ~BatchDocumentSession() = default;

    // Saves the batch's current document under the output rule of the run.
    virtual void SaveCurrent() = 0;
    // Whether the current document was already open in the editor when the batch came to it; such
    // a document stays open when the page closes it.
    virtual bool CurrentWasOpen() const = 0;
};
