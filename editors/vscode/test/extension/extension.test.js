// The bundled extension, run without the editor against the server of $TAVO: it starts the server,
// hands documents and settings over, and shows what the server answers.
"use strict";
const assert = require("node:assert/strict");
const Module = require("node:module");
const path = require("node:path");
const test = require("node:test");

const resolve = Module._resolveFilename;
Module._resolveFilename = (request, ...rest) =>
  request === "vscode" ? path.join(__dirname, "vscode.js") : resolve(request, ...rest);
const vscode = require("vscode");
const extension = require("../../dist/extension.js");
const { seen, settings, events, workspace, tabs } = vscode.tests;

const none = { isCancellationRequested: false, onCancellationRequested: () => ({ dispose() {} }) };

function documentOf(text) {
  return {
    uri: vscode.Uri.parse("file:///masks.tavo"),
    languageId: "tavo",
    version: 1,
    isClosed: false,
    getText: () => text,
  };
}

async function until(what) {
  for (let i = 0; i < 500; ++i) {
    const found = what();
    if (found) return found;
    await new Promise((wake) => setTimeout(wake, 20));
  }
  throw new Error("it did not happen in ten seconds");
}

test("a program that is not there is named", { timeout: 60000 }, async () => {
  settings.path = "/nowhere/tavo";
  await extension.activate({ subscriptions: [] });
  assert.match(seen.errors.at(-1), /^\/nowhere\/tavo does not start; the setting tavo.path/);
});

test("documents go to the server, and what it says is shown", { timeout: 60000 }, async () => {
  settings.path = process.env.TAVO;
  settings.spelling = "long";
  const document = documentOf("pro=HASH, DSTFLD=X, AGLO=SHA256\n");
  tabs.push({ input: new vscode.TabInputText(document.uri) });
  await extension.activate({ subscriptions: [] });
  try {
    workspace.textDocuments.push(document);
    await events.onDidOpenTextDocument.fire(document);
    const [wrong] = await until(() => seen.diagnostics.get("file:///masks.tavo"));
    assert.equal(wrong.code, "unknown-option");
    assert.equal(wrong.severity, vscode.DiagnosticSeverity.Error);
    assert.equal(wrong.range.start.character, 20);

    const place = new vscode.Position(0, 20);
    const { items } = await seen.providers.CompletionItem.provideCompletionItems(
      document, place, none, {});
    assert.ok(items.some((item) => item.label === "ALGO"));
    const hover = await seen.providers.Hover.provideHover(
      document, new vscode.Position(0, 12), none);
    assert.ok(hover);
  } finally {
    await extension.deactivate();
  }
});

test("settings choose the layout, and may change", { timeout: 60000 }, async () => {
  Object.assign(settings, { path: process.env.TAVO, spelling: "long", optionALine: false });
  await extension.activate({ subscriptions: [] });
  try {
    const document = documentOf("pro=HASH, DSTFLD=X\n");
    await events.onDidOpenTextDocument.fire(document);
    const formatted = async () => {
      const [edit] = await seen.providers.DocumentFormattingEdit.provideDocumentFormattingEdits(
        document, { tabSize: 2, insertSpaces: true }, none);
      return edit.newText;
    };
    assert.equal(await formatted(), "PROVIDER=HASH, DSTFLD=X");
    settings.optionALine = true;
    await events.onDidChangeConfiguration.fire({
      affectsConfiguration: (name) => name === "tavo",
    });
    assert.equal(await formatted(), "PROVIDER=HASH,\n  DSTFLD=X");
  } finally {
    await extension.deactivate();
  }
});
