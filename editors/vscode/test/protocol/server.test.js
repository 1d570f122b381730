// The server of $TAVO, driven by the protocol's own client library.
"use strict";
const assert = require("node:assert/strict");
const { spawn } = require("node:child_process");
const test = require("node:test");
const rpc = require("vscode-jsonrpc/node");
const lsp = require("vscode-languageserver-protocol");

const uri = "file:///masks.tavo";

async function withServer(capabilities, work) {
  const server = spawn(process.env.TAVO, ["lsp"], { stdio: ["pipe", "pipe", "inherit"] });
  const ended = new Promise((resolve) => server.on("exit", resolve));
  const connection = rpc.createMessageConnection(
    new rpc.StreamMessageReader(server.stdout),
    new rpc.StreamMessageWriter(server.stdin),
  );
  const published = [];
  let wake = () => {};
  connection.onNotification(lsp.PublishDiagnosticsNotification.type, (params) => {
    published.push(params);
    wake();
  });
  connection.listen();
  const initialized = await connection.sendRequest(lsp.InitializeRequest.type, {
    processId: process.pid,
    rootUri: null,
    capabilities,
  });
  await connection.sendNotification(lsp.InitializedNotification.type, {});
  const client = {
    connection,
    initialized,
    published,
    open: (text) =>
      connection.sendNotification(lsp.DidOpenTextDocumentNotification.type, {
        textDocument: { uri, languageId: "tavo", version: 1, text },
      }),
    // The first diagnostics of a version.
    diagnostics: async (version) => {
      for (;;) {
        const found = published.find((each) => each.version === version);
        if (found) return found.diagnostics;
        await new Promise((resolve) => (wake = resolve));
      }
    },
  };
  try {
    await work(client);
  } finally {
    await connection.sendRequest(lsp.ShutdownRequest.type);
    await connection.sendNotification(lsp.ExitNotification.type);
    assert.equal(await ended, 0);
    connection.dispose();
  }
}

const everything = {
  general: { positionEncodings: ["utf-16"] },
  textDocument: {
    codeAction: { codeActionLiteralSupport: { codeActionKind: { valueSet: ["quickfix"] } } },
    documentSymbol: { hierarchicalDocumentSymbolSupport: true },
    completion: { completionItem: { snippetSupport: true } },
    hover: { contentFormat: ["markdown"] },
  },
};
const textDocument = { uri };

test("diagnostics are published, fixed, and gone", { timeout: 60000 }, () =>
  withServer(everything, async ({ connection, open, diagnostics }) => {
    await open("PRO=HASH, DSTFLD=X, AGLO=SHA256\n");
    const [wrong] = await diagnostics(1);
    assert.equal(wrong.code, "unknown-option");
    const [action] = await connection.sendRequest(lsp.CodeActionRequest.type, {
      textDocument,
      range: wrong.range,
      context: { diagnostics: [wrong], only: [lsp.CodeActionKind.QuickFix] },
    });
    const [edit] = action.edit.changes[uri];
    await connection.sendNotification(lsp.DidChangeTextDocumentNotification.type, {
      textDocument: { uri, version: 2 },
      contentChanges: [{ range: edit.range, text: edit.newText }],
    });
    assert.deepEqual(await diagnostics(2), []);
  }));

test("every feature answers", { timeout: 60000 }, () =>
  withServer(everything, async ({ connection, open, initialized }) => {
    assert.equal(initialized.capabilities.positionEncoding, "utf-16");
    await open("pro=HASH, FLDDEF1=(NAME=X), DSTFLD=X, ALGO=SHA256\n");
    const position = { line: 0, character: 24 };
    const ask = (type, params) => connection.sendRequest(type, { textDocument, ...params });
    const options = { tabSize: 2, insertSpaces: true };
    const range = { start: { line: 0, character: 0 }, end: { line: 1, character: 0 } };
    assert.match((await ask(lsp.HoverRequest.type, { position })).contents.value, /Name of the field/);
    assert.equal((await ask(lsp.SignatureHelpRequest.type, { position })).signatures.length, 1);
    const completion = await ask(lsp.CompletionRequest.type, { position: { line: 0, character: 44 } });
    assert.ok(completion.items.some((item) => item.label === "SHA256"));
    const [formatted] = await ask(lsp.DocumentFormattingRequest.type, { options });
    assert.match(formatted.newText, /^PRO=HASH, /);
    assert.equal((await ask(lsp.DocumentRangeFormattingRequest.type, { range, options })).length, 1);
    const [symbol] = await ask(lsp.DocumentSymbolRequest.type, {});
    assert.equal(symbol.name, "HASH X");
    assert.deepEqual(await ask(lsp.FoldingRangeRequest.type, {}), []);
    const [selection] = await ask(lsp.SelectionRangeRequest.type, { positions: [position] });
    assert.ok(selection.parent.parent);
    assert.ok((await ask(lsp.SemanticTokensRequest.type, {})).data.length > 0);
    assert.ok((await ask(lsp.SemanticTokensRangeRequest.type, { range })).data.length > 0);
    assert.ok((await ask(lsp.DocumentHighlightRequest.type, { position: { line: 0, character: 1 } })) !== null);
  }));

test("diagnostics are pulled by a client that pulls", { timeout: 60000 }, () =>
  withServer({ textDocument: { diagnostic: {} } }, async ({ connection, open, published }) => {
    await open("PRO=XYZ\n");
    const report = await connection.sendRequest(lsp.DocumentDiagnosticRequest.type, { textDocument });
    assert.equal(report.kind, "full");
    assert.equal(report.items[0].code, "unknown-provider");
    assert.deepEqual(published, []);
  }));

test("what is wrong with a request is told", { timeout: 60000 }, () =>
  withServer({}, async ({ connection }) => {
    await assert.rejects(connection.sendRequest("no/such/method"), { code: -32601 });
    await assert.rejects(connection.sendRequest("textDocument/hover", { textDocument: 5 }), {
      code: -32602,
    });
  }));

test("a cancelled request is answered", { timeout: 60000 }, () =>
  withServer(everything, async ({ connection, open }) => {
    await open("PRO=HASH, DSTFLD=X\n".repeat(3000));
    const source = new rpc.CancellationTokenSource();
    const first = connection.sendRequest("textDocument/documentSymbol", { textDocument });
    const second = connection.sendRequest("textDocument/documentSymbol", { textDocument }, source.token);
    source.cancel();
    assert.equal((await first).length, 3000);
    await second.then(
      (symbols) => assert.equal(symbols.length, 3000), // it was too fast
      (error) => assert.equal(error.code, -32800),
    );
  }));
