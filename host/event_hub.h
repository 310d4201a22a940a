// The document and application event records that plug-ins registered, and the firing of their
// hooks. Hooks may register, unregister or cause further events while they run: each firing
// works on a copy of the list and skips a record that was unregistered in the meantime.
#pragma once

#include <cstdint>
#include <vector>

#include "host_abi.h"

namespace pdfhost {

class EventHub {
  public:
    // A record registered twice is kept once. `pluginId` is the plug-in that registered it.
    void AddDocRecord(HostDocEventRecord* record, uint32_t pluginId);
    void RemoveDocRecord(HostDocEventRecord* record);
    void AddAppRecord(HostAppEventRecord* record, uint32_t pluginId);
    // Drops every record of a plug-in that goes away.
    void RemovePlugin(uint32_t pluginId);

    std::size_t DocRecordCount() const { return docRecords_.size(); }
    std::size_t AppRecordCount() const { return appRecords_.size(); }

    void WillOpen();
    void DidOpen(HostDoc doc);
    void Activate(HostDoc doc);
    void DidSave(HostDoc doc, int result);
    void Closing(HostDoc doc);
    void Modified(HostDoc doc);
    void OtherTab();
    void FieldChanged(HostDoc doc, NdxFormField field);

  private:
    template <typename Record>
    struct Entry {
        Record* record;
        uint32_t pluginId;
    };

    // Calls word `word` of every registered document record that fills it.
    template <typename Hook, typename... Args>
    void FireDoc(std::size_t word, Args... args);
    bool IsRegistered(const HostDocEventRecord* record) const;

    std::vector<Entry<HostDocEventRecord>> docRecords_;
    std::vector<Entry<HostAppEventRecord>> appRecords_;
};

}  // namespace pdfhost
