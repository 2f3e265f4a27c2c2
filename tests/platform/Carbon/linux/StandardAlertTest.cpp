// Alert boxes looked at from inside while they are shown. Needs a display.
#include <Carbon/Carbon.h>

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <X11/Xlib.h> // last: its macros would take GoogleTest's names

#include <csignal>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

/// A string that lives as long as the test program.
CFStringRef Utf8(const char* text) {
    static std::vector<std::unique_ptr<const void, decltype(&CFRelease)>> kept;
    auto* string = CFStringCreateWithCString(kCFAllocatorDefault, text, kCFStringEncodingUTF8);
    kept.emplace_back(string, CFRelease);
    return string;
}

AlertStdCFStringAlertParamRec YesOrNo() {
    return {kStdCFStringAlertVersionOne,
            true,
            false,
            Utf8("Yes"),
            Utf8("No"),
            nullptr,
            kAlertStdAlertOKButton,
            kAlertStdAlertCancelButton,
            kWindowDefaultPosition,
            0};
}

using Look = std::function<void(GtkDialog*)>;

GtkDialog* ShownBox() {
    GList* windows = gtk_window_list_toplevels();
    GtkDialog* found = nullptr;
    for (GList* each = windows; each != nullptr; each = each->next) {
        if (GTK_IS_MESSAGE_DIALOG(each->data) != FALSE &&
            gtk_widget_get_visible(GTK_WIDGET(each->data)) != FALSE) {
            found = GTK_DIALOG(each->data);
        }
    }
    g_list_free(windows);
    return found;
}

constexpr int byTheLook = 0;

/// Runs @p alert, takes a look at the box, answers it with @p response; the item hit.
DialogItemIndex Answered(DialogRef alert, int response, const Look& look) {
    struct Visit {
        int response;
        const Look& look;
    } visit{response, look};
    g_idle_add(
        [](gpointer data) -> gboolean {
            const auto& visitor = *static_cast<Visit*>(data);
            GtkDialog* box = ShownBox();
            if (box == nullptr) {
                return G_SOURCE_CONTINUE;
            }
            visitor.look(box);
            if (visitor.response != byTheLook) {
                gtk_dialog_response(box, visitor.response);
            }
            return G_SOURCE_REMOVE;
        },
        &visit);
    DialogItemIndex item = -1;
    EXPECT_EQ(RunStandardAlert(alert, nullptr, &item), noErr);
    return item;
}

DialogItemIndex Show(const char* main, const char* explanation,
                     const AlertStdCFStringAlertParamRec* parameters, int response,
                     const Look& look) {
    DialogRef alert = nullptr;
    EXPECT_EQ(
        CreateStandardAlert(kAlertStopAlert, Utf8(main), Utf8(explanation), parameters, &alert),
        noErr);
    return Answered(alert, response, look);
}

std::string TextProperty(GtkDialog* box, const char* name) {
    char* text = nullptr;
    g_object_get(box, name, &text, nullptr);
    std::string copy = text == nullptr ? "" : text;
    g_free(text);
    return copy;
}

std::string Caption(GtkDialog* box, int item) {
    GtkWidget* button = gtk_dialog_get_widget_for_response(box, item);
    return button == nullptr ? "" : gtk_button_get_label(GTK_BUTTON(button));
}

int LeftEdge(GtkDialog* box, int item) {
    GtkAllocation place{};
    gtk_widget_get_allocation(gtk_dialog_get_widget_for_response(box, item), &place);
    return place.x;
}

GtkLabel* MainLabel(GtkDialog* box) {
    GtkWidget* area = gtk_message_dialog_get_message_area(GTK_MESSAGE_DIALOG(box));
    GList* children = gtk_container_get_children(GTK_CONTAINER(area));
    GtkLabel* first = GTK_LABEL(children->data);
    g_list_free(children);
    return first;
}

bool IsBold(GtkLabel* label) {
    bool bold = false;
    PangoAttrIterator* at = pango_attr_list_get_iterator(gtk_label_get_attributes(label));
    if (const auto* weight = pango_attr_iterator_get(at, PANGO_ATTR_WEIGHT)) {
        bold = reinterpret_cast<const PangoAttrInt*>(weight)->value == PANGO_WEIGHT_BOLD;
    }
    pango_attr_iterator_destroy(at);
    return bold;
}

TEST(StandardAlert, HasABoldMainTextAndAnExplanationAsTheyStand) {
    for (const auto& [main, explanation] :
         {std::pair{"Main", "Why"}, {"S\u00F8k", "Kj\u00F8re?"}, {"100 %s <b>", "a_b & %d"}}) {
        Show(main, explanation, nullptr, 1, [&](GtkDialog* box) {
            EXPECT_EQ(TextProperty(box, "text"), main);
            EXPECT_EQ(TextProperty(box, "secondary-text"), explanation);
            EXPECT_STREQ(gtk_label_get_text(MainLabel(box)), main);
            EXPECT_TRUE(IsBold(MainLabel(box)));
        });
    }
}

TEST(StandardAlert, IsNamedByItsMainText) {
    Show("\"Main\"", "Why", nullptr, 1,
         [](GtkDialog* box) { EXPECT_STREQ(gtk_window_get_title(GTK_WINDOW(box)), "\"Main\""); });
}

TEST(StandardAlert, ShowsLongTextsWhole) {
    std::string text;
    for (int word = 0; word < 1000; ++word) {
        text += std::to_string(word) + ' ';
    }
    Show("Main", text.c_str(), nullptr, 1,
         [&](GtkDialog* box) { EXPECT_EQ(TextProperty(box, "secondary-text"), text); });
}

TEST(StandardAlert, ShowsNoTextForNoString) {
    DialogRef alert = nullptr;
    ASSERT_EQ(CreateStandardAlert(kAlertStopAlert, Utf8("Main"), nullptr, nullptr, &alert), noErr);
    Answered(alert, 1, [](GtkDialog* box) { EXPECT_EQ(TextProperty(box, "secondary-text"), ""); });
}

TEST(StandardAlert, HasTheStopIcon) {
    Show("Main", "Why", nullptr, 1, [](GtkDialog* box) {
        G_GNUC_BEGIN_IGNORE_DEPRECATIONS
        GtkWidget* image = gtk_message_dialog_get_image(GTK_MESSAGE_DIALOG(box));
        G_GNUC_END_IGNORE_DEPRECATIONS
        const char* name = nullptr;
        gtk_image_get_icon_name(GTK_IMAGE(image), &name, nullptr);
        EXPECT_STREQ(name, "dialog-error");
        EXPECT_TRUE(gtk_widget_get_visible(image));
        EXPECT_TRUE(gtk_icon_theme_has_icon(gtk_icon_theme_get_default(), name));
    });
}

TEST(StandardAlert, IsModal) {
    Show("Main", "Why", nullptr, 1,
         [](GtkDialog* box) { EXPECT_TRUE(gtk_window_get_modal(GTK_WINDOW(box))); });
}

TEST(StandardAlert, WithoutParametersHasAnOkButtonOnly) {
    Show("Main", "Why", nullptr, 1, [](GtkDialog* box) {
        EXPECT_EQ(Caption(box, 1), "OK");
        EXPECT_EQ(gtk_dialog_get_widget_for_response(box, 2), nullptr);
        EXPECT_EQ(gtk_window_get_default_widget(GTK_WINDOW(box)),
                  gtk_dialog_get_widget_for_response(box, 1));
    });
}

TEST(StandardAlert, WithParametersHasTheirCaptionsCancelOnTheLeft) {
    const auto parameters = YesOrNo();
    Show("Main", "Why", &parameters, 1, [](GtkDialog* box) {
        EXPECT_EQ(Caption(box, 1), "Yes");
        EXPECT_EQ(Caption(box, 2), "No");
        EXPECT_LT(LeftEdge(box, 2), LeftEdge(box, 1));
    });
}

TEST(StandardAlert, CaptionsKeepUnderscores) {
    auto parameters = YesOrNo();
    parameters.defaultText = Utf8("a_b");
    Show("Main", "Why", &parameters, 1, [](GtkDialog* box) {
        EXPECT_EQ(Caption(box, 1), "a_b");
        EXPECT_FALSE(
            gtk_button_get_use_underline(GTK_BUTTON(gtk_dialog_get_widget_for_response(box, 1))));
    });
}

TEST(StandardAlert, WithoutCancelTextHasNoCancelButton) {
    auto parameters = YesOrNo();
    parameters.cancelText = nullptr;
    Show("Main", "Why", &parameters, 1,
         [](GtkDialog* box) { EXPECT_EQ(gtk_dialog_get_widget_for_response(box, 2), nullptr); });
}

TEST(StandardAlert, DefaultButtonIsTheOneAskedFor) {
    auto parameters = YesOrNo();
    for (const short item : {kAlertStdAlertOKButton, kAlertStdAlertCancelButton}) {
        parameters.defaultButton = item;
        Show("Main", "Why", &parameters, 1, [item](GtkDialog* box) {
            EXPECT_EQ(gtk_window_get_default_widget(GTK_WINDOW(box)),
                      gtk_dialog_get_widget_for_response(box, item));
        });
    }
}

TEST(StandardAlert, AnswersWithTheButtonPressed) {
    const auto parameters = YesOrNo();
    for (const short item : {kAlertStdAlertOKButton, kAlertStdAlertCancelButton}) {
        const auto hit = Show("Main", "Why", &parameters, byTheLook, [item](auto* box) {
            gtk_button_clicked(GTK_BUTTON(gtk_dialog_get_widget_for_response(box, item)));
        });
        EXPECT_EQ(hit, item);
    }
}

TEST(StandardAlert, ClosedAnswersWithTheCancelButton) {
    auto parameters = YesOrNo();
    const Look nothing = [](GtkDialog*) {};
    EXPECT_EQ(Show("Main", "Why", &parameters, GTK_RESPONSE_DELETE_EVENT, nothing), 2);
    parameters.cancelButton = kAlertStdAlertOKButton;
    EXPECT_EQ(Show("Main", "Why", &parameters, GTK_RESPONSE_DELETE_EVENT, nothing), 1);
    EXPECT_EQ(Show("Main", "Why", nullptr, GTK_RESPONSE_DELETE_EVENT, nothing), 1);
}

TEST(StandardAlert, ThatIsNullIsNotRun) {
    DialogItemIndex item = -1;
    EXPECT_NE(RunStandardAlert(nullptr, nullptr, &item), noErr);
    EXPECT_EQ(item, 0);
}

int OnError(Display*, XErrorEvent*) {
    return 0;
}

int OnIoError(Display*) {
    return 0;
}

TEST(StandardAlert, LeavesTheHandlersOfXErrorsAsTheyWere) {
    const auto errorsBefore = XSetErrorHandler(OnError);
    const auto ioErrorsBefore = XSetIOErrorHandler(OnIoError);
    Show("Main", "Why", nullptr, 1, [](GtkDialog*) {});
    EXPECT_EQ(XSetErrorHandler(errorsBefore), &OnError);
    EXPECT_EQ(XSetIOErrorHandler(ioErrorsBefore), &OnIoError);
}

TEST(StandardAlert, LeavesBrokenPipesTheirEffect) {
    struct sigaction now{};
    for (const auto handler : {SIG_DFL, SIG_IGN}) {
        std::signal(SIGPIPE, handler);
        Show("Main", "Why", nullptr, 1, [](GtkDialog*) {});
        sigaction(SIGPIPE, nullptr, &now);
        EXPECT_EQ(now.sa_handler, handler);
    }
    std::signal(SIGPIPE, SIG_DFL);
}

} // namespace
