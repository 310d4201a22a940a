// Wires the page together: the bridge to the editor, the editor's events, the workflow, the
// view, and the automatic or batch mode when the address asks for it.
(function (root) {
  'use strict';

  const S = root.Sablemark;
  const options = S.pageOptions.parsePageOptions(root.location.search);
  const bridge = new S.bridge.Bridge(() => root.chrome && root.chrome.webview);
  const workflow = new S.workflow.Workflow({ bridge });
  if (options.accountPage) workflow.page = 'account';
  workflow.userMarks = new S.userMarks.UserMarks({
    workflow, beforeScan: !options.auto && !options.batch,
  });
  workflow.usage = new S.accountUsage.AccountUsage({
    workflow, address: options.service, fetch: (...args) => root.fetch(...args),
  });
  workflow.onChange(() => workflow.userMarks.follow());
  const scanOptions = {
    terms: options.terms, wholeWord: options.wholeWord, kinds: options.kinds,
    minConfidence: options.minConfidence, regions: options.regions,
  };
  const batch = options.batch ? new S.batchRun.BatchRunner({ workflow, scanOptions, log: (l) => console.log(l) }) : null;
  const runner = options.auto && !batch ? new S.autoRun.AutoRunner({ workflow, scanOptions }) : null;

  // The editor calls this with each event, as an object or as its JSON text. It exists before
  // anything else so that no early event is lost.
  root.__dispatchEvent = function (value) {
    const event = S.bridge.parseEvent(value);
    if (!event) return;
    workflow.handleEvent(event);
    workflow.userMarks.handleEvent(event);
    if (runner) runner.handleEvent(event);
    else if (event.name === 'ev-doc-activate' && event.data.id !== '0' && !workflow.current) {
      workflow.refreshDocument().catch(() => {});
    }
  };

  function start() {
    if (batch) {
      // The batch dialog gets no events and has no document of its own: the run is the page.
      const view = S.batchView.createBatchView(root.document, batch, workflow);
      batch.onChange(view.render);
      workflow.onChange(view.render);
      view.render();
      batch.run().catch(() => {});
      return;
    }
    const view = S.view.createView(root.document, workflow, options);
    workflow.onChange(view.render);
    view.render();
    workflow.loadAccount();
    if (runner) runner.start();
    else workflow.refreshDocument().catch(() => {});
  }

  if (root.document.readyState === 'loading') root.document.addEventListener('DOMContentLoaded', start);
  else start();
})(globalThis);
