// As much of the editor's interface as the extension and the client library need to run without the
// editor. What nothing below defines is a class that does nothing, or a function that registers
// nothing. What the client registers and shows is in `seen`.
"use strict";
const { CancellationTokenSource } = require("vscode-jsonrpc");

const seen = { providers: {}, diagnostics: new Map(), errors: [], sent: [] };
const settings = {};
const events = {};

class Disposable {
  static from(...all) {
    return new Disposable(() => all.forEach((each) => each.dispose()));
  }
  constructor(end) {
    this.end = end;
  }
  dispose() {
    if (this.end) this.end();
  }
}

class EventEmitter {
  constructor() {
    this.listeners = new Set();
    this.event = (listener, self) => {
      const bound = self ? listener.bind(self) : listener;
      this.listeners.add(bound);
      return new Disposable(() => this.listeners.delete(bound));
    };
  }
  fire(value) {
    return Promise.all([...this.listeners].map((listener) => listener(value)));
  }
  dispose() {}
}

class Position {
  constructor(line, character) {
    Object.assign(this, { line, character });
  }
}

class Range {
  constructor(...places) {
    const [start, end] =
      places.length === 4
        ? [new Position(places[0], places[1]), new Position(places[2], places[3])]
        : places;
    Object.assign(this, { start, end });
  }
}

class Uri {
  constructor(text) {
    this.text = text;
    this.scheme = text.split(":")[0];
    this.fsPath = this.path = text.replace(/^file:\/\//, "");
  }
  static parse(text) {
    return new Uri(text);
  }
  static file(path) {
    return new Uri(`file://${path}`);
  }
  toString() {
    return this.text;
  }
}

class Diagnostic {
  constructor(range, message, severity) {
    Object.assign(this, { range, message, severity });
  }
}

class CodeActionKind {
  constructor(value) {
    this.value = value;
  }
  append(part) {
    return new CodeActionKind([this.value, part].filter(Boolean).join("."));
  }
}
CodeActionKind.Empty = new CodeActionKind("");
for (const name of ["QuickFix", "Refactor", "Source"]) {
  CodeActionKind[name] = new CodeActionKind(name.toLowerCase());
}
for (const name of ["Extract", "Inline", "Rewrite"]) {
  CodeActionKind[`Refactor${name}`] = CodeActionKind.Refactor.append(name.toLowerCase());
}
CodeActionKind.SourceOrganizeImports = CodeActionKind.Source.append("organizeImports");
CodeActionKind.SourceFixAll = CodeActionKind.Source.append("fixAll");

class TabInputText {
  constructor(uri) {
    this.uri = uri;
  }
}

class CompletionItem {
  constructor(label) {
    this.label = label;
  }
}

class CompletionList {
  constructor(items) {
    this.items = items;
  }
}

class TextEdit {
  constructor(range, newText) {
    Object.assign(this, { range, newText });
  }
}

class CancellationError extends Error {}

// A namespace whose unknown members answer something harmless.
function namespace(known) {
  return new Proxy(known, {
    get(target, name) {
      if (name in target || typeof name === "symbol" || name === "then") return target[name];
      if (/^on(Did|Will)/.test(name)) {
        events[name] ??= new EventEmitter();
        return events[name].event;
      }
      const kind = /^register(\w+)Provider$/.exec(name);
      if (kind) {
        return (...given) => {
          seen.providers[kind[1]] = given.find((each) => each && Object.keys(each).some(
            (key) => key.startsWith("provide")));
          return new Disposable();
        };
      }
      return () => new Disposable();
    },
  });
}

const workspace = {
  textDocuments: [],
  workspaceFolders: undefined,
  notebookDocuments: [],
  getConfiguration: () => ({
    get: (name, otherwise) => settings[name] ?? otherwise,
  }),
  createFileSystemWatcher: () => namespace({ dispose() {} }),
};

const languages = {
  match: (selector, document) =>
    [selector].flat().some((each) => each.language === document.languageId) ? 10 : 0,
  createDiagnosticCollection: () => ({
    set: (uri, all) => seen.diagnostics.set(uri.toString(), all),
    delete: (uri) => seen.diagnostics.delete(uri.toString()),
    clear: () => seen.diagnostics.clear(),
    dispose() {},
  }),
};

const tabs = [];
const window = {
  visibleTextEditors: [],
  tabGroups: namespace({ all: [{ tabs }] }),
  createOutputChannel: () =>
    namespace({ append() {}, appendLine() {}, show() {}, dispose() {} }),
  showErrorMessage: async (text) => void seen.errors.push(text),
};

const api = {
  version: "1.82.0",
  Disposable,
  EventEmitter,
  Position,
  Range,
  Uri,
  Diagnostic,
  CodeActionKind,
  CompletionItem,
  CompletionList,
  TextEdit,
  TabInputText,
  CancellationError,
  CancellationTokenSource,
  workspace: namespace(workspace),
  languages: namespace(languages),
  window: namespace(window),
  env: { appName: "none", language: "en" },
  commands: namespace({}),
  extensions: namespace({}),
  l10n: { t: (text) => text },
  DiagnosticSeverity: { Error: 0, Warning: 1, Information: 2, Hint: 3 },
  tests: { seen, settings, events, workspace, tabs },
};

module.exports = new Proxy(api, {
  get: (target, name) =>
    name in target || typeof name === "symbol" || name === "__esModule"
      ? target[name]
      : (target[name] = class {
          constructor(...given) {
            this.given = given;
          }
        }),
});
