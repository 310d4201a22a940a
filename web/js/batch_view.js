// The batch dialog's view: which file is in work, how far the run is, and Stop. The pane's scan
// controls are hidden in this mode; the workflow's own activity line still shows each step.
(function (root) {
  'use strict';

  function createBatchView(doc, runner, workflow) {
    const $ = (id) => doc.getElementById(id);
    $('scan-form').hidden = true;
    $('batch').hidden = false;
    doc.title = 'Batch Redaction';
    $('batch-stop').addEventListener('click', () => runner.stop());
    $('batch-start').addEventListener('click', () => runner.run().catch(() => {}));

    function render() {
      const { count, position, pageCount, pagesDone } = runner;
      $('doc-line').textContent = runner.fileName || (runner.running ? 'Starting the batch' : 'Batch Redaction');
      $('batch-files').textContent = count ? `File ${Math.min(position, count)} of ${count}` : '';
      $('batch-pages').textContent = pageCount ? `${pagesDone} of ${pageCount} page(s) done` : '';
      const bar = $('batch-progress');
      bar.max = Math.max(count, 1);
      bar.value = Math.min(position, count);
      $('batch-stop').hidden = !runner.running;
      $('batch-stop').disabled = runner.stopRequested;
      $('batch-stop').textContent = runner.stopRequested ? 'Stopping after this file…' : 'Stop';
      $('batch-start').hidden = runner.running || !runner.ended || runner.ended.ret === 0;
      $('batch-failed').replaceChildren(...runner.failed.map((f) => {
        const item = doc.createElement('li');
        item.textContent = `${f.file}: ${f.message}`;
        return item;
      }));
      $('status').textContent = runner.ended ? runner.ended.message
        : workflow.busy ? `${workflow.activity}…` : '';
      $('error').hidden = !runner.error;
      $('error').textContent = runner.error || '';
      doc.body.classList.toggle('busy', runner.running);
    }

    return { render };
  }

  (root.Sablemark = root.Sablemark || {}).batchView = { createBatchView };
})(globalThis);
