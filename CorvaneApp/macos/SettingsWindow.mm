#include "CorvaneApp/macos/SettingsWindow.hpp"

#include "CorvaneApp/api/CommandApi.hpp"
#include "CorvaneApp/api/WebResources.hpp"
#include "CorvaneApp/macos/JsonPanels.hpp"
#include "CorvaneApp/shell/WindowBridge.hpp"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UTCoreTypes.h>
#import <WebKit/WKContentWorld.h>
#import <WebKit/WKNavigationAction.h>
#import <WebKit/WKNavigationDelegate.h>
#import <WebKit/WKScriptMessage.h>
#import <WebKit/WKScriptMessageHandlerWithReply.h>
#import <WebKit/WKURLSchemeHandler.h>
#import <WebKit/WKURLSchemeTask.h>
#import <WebKit/WKUserContentController.h>
#import <WebKit/WKWebView.h>
#import <WebKit/WKWebViewConfiguration.h>

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

using namespace corvane;

namespace {

NSString* text(std::string_view value) {
    NSString* string = [[NSString alloc] initWithBytes:value.data() length:value.size() encoding:NSUTF8StringEncoding];
    return string != nil ? string : @"";
}

std::string utf8(NSString* value) {
    const char* bytes = value.UTF8String;
    return bytes != nullptr ? std::string(bytes) : std::string();
}

NSDictionary* replyObject(const WindowBridge::Reply& reply) {
    return @{@"status" : @(reply.status), @"body" : text(reply.body)};
}

WindowBridge::Reply ok(const nlohmann::json& body) {
    return {200, body.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace)};
}

/// The parameters a page posted, as JSON text: the page may send an object or text already encoded.
std::string parametersText(id body) {
    if (body == nil || body == NSNull.null) return "{}";
    if ([body isKindOfClass:NSString.class]) return utf8(body);
    if (![NSJSONSerialization isValidJSONObject:body]) return "{}";
    NSData* data = [NSJSONSerialization dataWithJSONObject:body options:0 error:nil];
    return data != nil ? std::string(static_cast<const char*>(data.bytes), data.length) : "{}";
}

std::vector<std::string> paths(NSArray<NSURL*>* urls) {
    std::vector<std::string> result;
    for (NSURL* url in urls)
        if (url.isFileURL) result.push_back(utf8(url.path));
    return result;
}

NSArray<NSURL*>* droppedFiles(id<NSDraggingInfo> drag) {
    return [drag.draggingPasteboard readObjectsForClasses:@[ NSURL.class ]
                                                  options:@{NSPasteboardURLReadingFileURLsOnlyKey : @YES}];
}

} // namespace

/// Serves the compiled-in pages for corvane://app/PATH; anything else is not found.
@interface CorvanePageServer : NSObject <WKURLSchemeHandler>
@end

@implementation CorvanePageServer

- (void)webView:(WKWebView*)webView startURLSchemeTask:(id<WKURLSchemeTask>)task {
    NSURL* url = task.request.URL;
    const WebResource* resource = nullptr;
    if ([url.host isEqualToString:text(WindowBridge::host)]) resource = findWebResource(utf8(url.path));
    NSData* data = resource != nullptr ? [NSData dataWithBytes:resource->bytes.data() length:resource->bytes.size()]
                                        : [@"not found" dataUsingEncoding:NSUTF8StringEncoding];
    NSString* type = resource != nullptr ? text(resource->contentType) : @"text/plain; charset=utf-8";
    NSHTTPURLResponse* response =
        [[NSHTTPURLResponse alloc] initWithURL:url
                                    statusCode:resource != nullptr ? 200 : 404
                                   HTTPVersion:@"HTTP/1.1"
                                  headerFields:@{
                                      @"Content-Type" : type,
                                      @"Content-Length" : [NSString stringWithFormat:@"%lu", (unsigned long)data.length],
                                      @"Cache-Control" : @"no-store",
                                  }];
    [task didReceiveResponse:response];
    [task didReceiveData:data];
    [task didFinish];
}

- (void)webView:(WKWebView*)webView stopURLSchemeTask:(id<WKURLSchemeTask>)task {
    // Every task is answered at once from memory: nothing is left running to stop.
}

@end

/// The web view, taking files dragged from the Finder for the page instead of opening them.
@interface CorvaneWebView : WKWebView
@property(nonatomic, copy) void (^filesDropped)(NSArray<NSURL*>* files);
@end

@implementation CorvaneWebView

- (NSDragOperation)draggingEntered:(id<NSDraggingInfo>)sender {
    if (droppedFiles(sender).count > 0) return NSDragOperationCopy;
    return [super draggingEntered:sender];
}

- (NSDragOperation)draggingUpdated:(id<NSDraggingInfo>)sender {
    if (droppedFiles(sender).count > 0) return NSDragOperationCopy;
    return [super draggingUpdated:sender];
}

- (BOOL)prepareForDragOperation:(id<NSDraggingInfo>)sender {
    if (droppedFiles(sender).count > 0) return YES;
    return [super prepareForDragOperation:sender];
}

- (BOOL)performDragOperation:(id<NSDraggingInfo>)sender {
    NSArray<NSURL*>* files = droppedFiles(sender);
    if (files.count == 0) return [super performDragOperation:sender];
    if (self.filesDropped) self.filesDropped(files);
    return YES;
}

@end

/// The pages' one way out: calls to the command vocabulary and the few native ones, and the
/// navigation policy that keeps the web view on Corvane's own pages.
@interface CorvaneWindowBridge : NSObject <WKScriptMessageHandlerWithReply, WKNavigationDelegate>
@property(nonatomic, weak) NSWindow* window;
/// A page asked for before the pages finished loading, shown once they have.
@property(nonatomic, copy) NSString* pendingPage;
@property(nonatomic) BOOL pageReady;
- (instancetype)initWithApi:(CommandApi*)api;
@end

@implementation CorvaneWindowBridge {
    CommandApi* _api;
    dispatch_queue_t _calls;
}

- (instancetype)initWithApi:(CommandApi*)api {
    if ((self = [super init])) {
        _api = api;
        // One call at a time, off the main thread: a Dock switch holds its caller for seconds.
        _calls = dispatch_queue_create("dev.tessik.corvane.window-calls", DISPATCH_QUEUE_SERIAL);
    }
    return self;
}

- (void)userContentController:(WKUserContentController*)userContentController
      didReceiveScriptMessage:(WKScriptMessage*)message
                 replyHandler:(void (^)(id _Nullable reply, NSString* _Nullable errorMessage))replyHandler {
    NSDictionary* posted = [message.body isKindOfClass:NSDictionary.class] ? message.body : nil;
    NSString* words = [posted[@"words"] isKindOfClass:NSString.class] ? posted[@"words"] : nil;
    if (words == nil) return replyHandler(replyObject(WindowBridge::error(400, "a call needs its words")), nil);
    auto call = utf8(words);
    auto parameters = parametersText(posted[@"body"]);
    if (call.starts_with(WindowBridge::nativePrefix)) {
        auto parsed = nlohmann::json::parse(parameters, nullptr, false);
        if (!parsed.is_object()) parsed = nlohmann::json::object();
        auto answer = ^(const WindowBridge::Reply& reply) {
          replyHandler(replyObject(reply), nil);
        };
        // A parameter of the wrong type throws while it is read; nothing has been shown yet.
        try {
            [self answerNative:call.substr(WindowBridge::nativePrefix.size()) parameters:parsed reply:answer];
        } catch (const std::exception& error) {
            answer(WindowBridge::error(400, error.what()));
        }
        return;
    }
    CommandApi* api = _api;
    dispatch_async(_calls, ^{
      WindowBridge::Reply reply;
      // An exception must not leave a dispatch queue: it would end the application.
      try {
          ApiReply answer = api->call(call, parameters);
          reply = {answer.status, std::move(answer.body)};
      } catch (const std::exception& error) {
          reply = WindowBridge::error(500, error.what());
      }
      dispatch_async(dispatch_get_main_queue(), ^{
        replyHandler(replyObject(reply), nil);
      });
    });
}

- (void)answerNative:(const std::string&)name
          parameters:(const nlohmann::json&)parameters
               reply:(void (^)(const WindowBridge::Reply& reply))reply {
    if (name == "open-panel") {
        NSOpenPanel* panel = [NSOpenPanel openPanel];
        auto kind = parameters.value("kind", std::string("file"));
        panel.allowsMultipleSelection = parameters.value("multiple", false);
        panel.canChooseDirectories = kind == "folder";
        panel.canChooseFiles = kind != "folder";
        if (kind == "app") {
            panel.allowedContentTypes = @[ UTTypeApplicationBundle ];
            panel.directoryURL = [NSURL fileURLWithPath:@"/Applications" isDirectory:YES];
        } else if (kind == "json") {
            panel.allowedContentTypes = @[ UTTypeJSON ];
        }
        return [self runPanel:panel
                   completion:^(NSModalResponse response) {
                     auto chosen = response == NSModalResponseOK ? paths(panel.URLs) : std::vector<std::string>{};
                     reply(ok({{"paths", chosen}}));
                   }];
    }
    if (name == "save-panel") {
        NSSavePanel* panel = [NSSavePanel savePanel];
        panel.allowedContentTypes = @[ UTTypeJSON ];
        panel.nameFieldStringValue = text(parameters.value("name", std::string("Corvane Workspaces.json")));
        return [self runPanel:panel
                   completion:^(NSModalResponse response) {
                     if (response == NSModalResponseOK && panel.URL.isFileURL)
                         reply(ok({{"path", utf8(panel.URL.path)}}));
                     else
                         reply(ok({{"path", nullptr}}));
                   }];
    }
    if (name == "open-settings") {
        auto address = WindowBridge::systemSettingsAddress(parameters.value("pane", std::string()));
        NSURL* url = address ? [NSURL URLWithString:text(*address)] : nil;
        if (url == nil) return reply(WindowBridge::error(400, "no such System Settings pane"));
        [NSWorkspace.sharedWorkspace openURL:url];
        return reply(ok({{"ok", true}}));
    }
    reply(WindowBridge::error(404, "no such native call: " + name));
}

/// A panel as a sheet on the window, so that the window stays usable for the rest of the app.
- (void)runPanel:(NSSavePanel*)panel completion:(void (^)(NSModalResponse response))completion {
    NSWindow* window = self.window;
    if (window != nil && window.visible) return [panel beginSheetModalForWindow:window completionHandler:completion];
    JsonPanels::comeForward();
    completion([panel runModal]);
}

- (void)showPage:(NSString*)page inWebView:(WKWebView*)webView {
    if (!self.pageReady) {
        self.pendingPage = page;
        return;
    }
    [webView evaluateJavaScript:text(WindowBridge::openPageScript(utf8(page)))
                 inContentWorld:WKContentWorld.pageWorld
              completionHandler:nil];
}

- (void)webView:(WKWebView*)webView
    decidePolicyForNavigationAction:(WKNavigationAction*)navigationAction
                    decisionHandler:(void (^)(WKNavigationActionPolicy))decisionHandler {
    NSURL* url = navigationAction.request.URL;
    NSString* scheme = url.scheme.lowercaseString;
    if ([scheme isEqualToString:text(WindowBridge::scheme)]) return decisionHandler(WKNavigationActionPolicyAllow);
    // Corvane's pages never load from the network; a link the user follows opens in the browser.
    if ([scheme isEqualToString:@"https"] && navigationAction.navigationType == WKNavigationTypeLinkActivated)
        [NSWorkspace.sharedWorkspace openURL:url];
    decisionHandler(WKNavigationActionPolicyCancel);
}

- (void)webView:(WKWebView*)webView didFinishNavigation:(WKNavigation*)navigation {
    self.pageReady = YES;
    if (NSString* page = self.pendingPage) {
        self.pendingPage = nil;
        [self showPage:page inWebView:webView];
    }
}

- (void)webViewWebContentProcessDidTerminate:(WKWebView*)webView {
    // The page's process ended (memory pressure, a crash): start it again where the user was.
    self.pageReady = NO;
    [webView reload];
}

@end

namespace corvane {

struct SettingsWindow::Views {
    NSWindow* window = nil;
    CorvaneWebView* webView = nil;
    CorvaneWindowBridge* bridge = nil;
    bool loaded = false;
};

SettingsWindow::SettingsWindow(CommandApi& api) : views_(std::make_unique<Views>()) {
    auto* views = views_.get();
    views->bridge = [[CorvaneWindowBridge alloc] initWithApi:&api];

    WKWebViewConfiguration* configuration = [WKWebViewConfiguration new];
    [configuration setURLSchemeHandler:[CorvanePageServer new] forURLScheme:text(WindowBridge::scheme)];
    [configuration.userContentController addScriptMessageHandlerWithReply:views->bridge
                                                             contentWorld:WKContentWorld.pageWorld
                                                                     name:@"corvane"];

    views->webView = [[CorvaneWebView alloc] initWithFrame:NSMakeRect(0, 0, 860, 600) configuration:configuration];
    views->webView.navigationDelegate = views->bridge;
    views->webView.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    [views->webView registerForDraggedTypes:@[ NSPasteboardTypeFileURL ]];
    __weak CorvaneWebView* webView = views->webView;
    views->webView.filesDropped = ^(NSArray<NSURL*>* files) {
      [webView evaluateJavaScript:text(WindowBridge::droppedPathsScript(paths(files)))
                   inContentWorld:WKContentWorld.pageWorld
                completionHandler:nil];
    };

    views->window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 860, 600)
                                                styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                                          NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable
                                                  backing:NSBackingStoreBuffered
                                                    defer:YES];
    views->window.title = @"Corvane";
    // Closing only hides it: the pages keep their state, and the next request opens at once.
    views->window.releasedWhenClosed = NO;
    views->window.minSize = NSMakeSize(640, 420);
    // Opened from the menu bar, it comes to the desktop the user is on rather than taking them
    // back to the one where it was last shown.
    views->window.collectionBehavior = NSWindowCollectionBehaviorMoveToActiveSpace;
    views->window.contentView = views->webView;
    [views->window center];
    [views->window setFrameAutosaveName:@"CorvaneWindow"];
    views->bridge.window = views->window;
}

SettingsWindow::~SettingsWindow() {
    [views_->webView.configuration.userContentController removeAllScriptMessageHandlers];
    views_->webView.navigationDelegate = nil;
    [views_->window close];
}

void SettingsWindow::open(const std::string& page) {
    auto* views = views_.get();
    if (!views->loaded) {
        views->loaded = true;
        NSURL* start = [NSURL URLWithString:text(WindowBridge::startAddress(page))];
        if (start == nil) start = [NSURL URLWithString:text(WindowBridge::startAddress(""))];
        [views->webView loadRequest:[NSURLRequest requestWithURL:start]];
    } else {
        [views->bridge showPage:text(page) inWebView:views->webView];
    }
    JsonPanels::comeForward();
    [views->window makeKeyAndOrderFront:nil];
}

} // namespace corvane
