// Starts `tavo lsp` and hands it the settings. Everything else is the server's.
import * as vscode from "vscode";
import { LanguageClient, LanguageClientOptions, ServerOptions } from "vscode-languageclient/node";

let client: LanguageClient | undefined;

function style(): { spelling: string; optionALine: boolean } {
  const settings = vscode.workspace.getConfiguration("tavo");
  return {
    spelling: settings.get<string>("spelling", "keep"),
    optionALine: settings.get<boolean>("optionALine", false),
  };
}

async function start(): Promise<void> {
  const command = vscode.workspace.getConfiguration("tavo").get<string>("path", "tavo");
  const server: ServerOptions = { command, args: ["lsp"] };
  const options: LanguageClientOptions = {
    documentSelector: [{ language: "tavo" }],
    initializationOptions: style(),
    synchronize: { fileEvents: vscode.workspace.createFileSystemWatcher("**/tavo.toml") },
  };
  client = new LanguageClient("tavo", "Masking statements", server, options);
  try {
    await client.start();
  } catch (error) {
    client = undefined;
    void vscode.window.showErrorMessage(
      `${command} does not start; the setting tavo.path names the program. ${String(error)}`,
    );
  }
}

async function stop(): Promise<void> {
  const running = client;
  client = undefined;
  await running?.stop();
}

export async function activate(context: vscode.ExtensionContext): Promise<void> {
  context.subscriptions.push(
    vscode.workspace.onDidChangeConfiguration(async (change) => {
      if (change.affectsConfiguration("tavo.path")) {
        await stop();
        await start();
      } else if (change.affectsConfiguration("tavo")) {
        await client?.sendNotification("workspace/didChangeConfiguration", {
          settings: { tavo: style() },
        });
      }
    }),
  );
  await start();
}

export async function deactivate(): Promise<void> {
  await stop();
}
