#include "wren/desktop/state/EditorPages.h"

#include "wren/desktop/state/KeyTable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

namespace wren {

namespace {

using Colours = PreferenceValues::Colours;
using Modifier = PreferenceValues::Modifier;
using LookupClick = PreferenceValues::LookupClick;
using Completion = PreferenceValues::Completion;
using KeepTags = PreferenceValues::KeepTags;

template <typename T>
void Choose(QComboBox* box, T value)
{
    box->setCurrentIndex(box->findData(static_cast<int>(value)));
}

template <typename T>
T Chosen(const QComboBox* box)
{
    return static_cast<T>(box->currentData().toInt());
}

QSpinBox* Number(int least, int most, const QString& unit)
{
    auto* box = new QSpinBox;
    box->setRange(least, most);
    box->setSuffix(" " + unit);
    return box;
}

QFormLayout* FormOn(QWidget* page)
{
    auto* form = new QFormLayout(page);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    return form;
}

} // namespace

EditorPages::EditorPages(QWidget* parent)
    : QStackedWidget(parent), font(new QComboBox),
      fontSize(Number(PreferenceValues::kSmallestFont, PreferenceValues::kLargestFont, tr("points"))),
      tabWidth(Number(PreferenceValues::kNarrowestTab, PreferenceValues::kWidestTab, tr("columns"))),
      indentsWithTabs(Switch(tr("&Indent with tabs"))), wrapsLines(Switch(tr("&Wrap long lines"))),
      showsBlanks(Switch(tr("Show &blanks and tabs"))), showsGuides(Switch(tr("Show &levels of indentation"))),
      showsScopes(Switch(tr("Show the scopes of the caret &above the text"))),
      followsConfig(Switch(tr("&Follow .editorconfig files"))),
      restoresSession(Switch(tr("Open last session's &files at start"))), colours(new QComboBox),
      command(ModifierBox("command")), control(ModifierBox("control")), option(ModifierBox("option")),
      lookupClick(new QComboBox), jumpsByMeaning(new QCheckBox(tr("F12 goes to what a name &means"))),
      completion(new QComboBox), keepsTags(new QComboBox), keys(new KeyTable)
{
    AddTextPage();
    AddNamesPage();
    AddKeysPage();
    AddSessionPage();
    FillBoxes();
    SetValues({});
}

QStringList EditorPages::Titles() const
{
    QStringList titles;
    for (int page = 0; page < count(); ++page)
        titles.push_back(widget(page)->accessibleName());
    return titles;
}

QWidget* EditorPages::AddPage(const QString& title)
{
    auto* page = new QWidget;
    page->setAccessibleName(title);
    addWidget(page);
    return page;
}

void EditorPages::AddTextPage()
{
    auto* form = FormOn(AddPage(tr("Text")));
    form->addRow(tr("F&ont:"), font);
    form->addRow(tr("&Size:"), fontSize);
    form->addRow(tr("&Colours:"), colours);
    form->addRow(tr("&Tab width:"), tabWidth);
    for (QCheckBox* each : {indentsWithTabs, wrapsLines, showsBlanks, showsGuides, showsScopes, followsConfig})
        form->addRow(each);
}

void EditorPages::AddNamesPage()
{
    names = FormOn(AddPage(tr("Names")));
    names->addRow(tr("&Look up with:"), lookupClick);
    names->addRow(tr("Co&mplete with:"), completion);
    names->addRow(jumpsByMeaning);
    names->addRow(tr("Keep the ta&gs file of a project current:"), keepsTags);
    jumpsByMeaning->setToolTip(tr("F12 goes to the definition, Control-F12 to the declaration, and Alt-F12 and "
                                  "Alt-Shift-F12 look up by name. Otherwise it is the other way round."));
    connect(jumpsByMeaning, &QCheckBox::toggled, this, [this] {
        ChooseJumps();
        Tell();
    });
}

void EditorPages::AddKeysPage()
{
    auto* column = new QVBoxLayout(AddPage(tr("Keys")));
    column->addWidget(keys, 1);
    auto* modifierKeys = new QGroupBox(tr("Modifiers"));
    auto* form = FormOn(modifierKeys);
    form->addRow(tr("Co&mmand is:"), command);
    form->addRow(tr("Co&ntrol is:"), control);
    form->addRow(tr("O&ption is:"), option);
    column->addWidget(modifierKeys);
}

void EditorPages::AddSessionPage()
{
    FormOn(AddPage(tr("Session")))->addRow(restoresSession);
}

void EditorPages::FillBoxes()
{
    font->setObjectName("font");
    font->addItem(tr("The desktop's fixed-width font"), "");
    for (const QString& family : QFontDatabase::families())
        if (QFontDatabase::isFixedPitch(family) && !QFontDatabase::isPrivateFamily(family))
            font->addItem(family, family);
    font->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    font->setMinimumContentsLength(20);
    colours->setObjectName("colours");
    colours->addItem(tr("As the desktop's"), static_cast<int>(Colours::Desktop));
    colours->addItem(tr("Light"), static_cast<int>(Colours::Light));
    colours->addItem(tr("Dark"), static_cast<int>(Colours::Dark));
    lookupClick->setObjectName("lookupClick");
    lookupClick->addItem(tr("Alt-click, Control-Alt-click"), static_cast<int>(LookupClick::Alt));
    lookupClick->addItem(tr("Control-click, Control-Shift-click"), static_cast<int>(LookupClick::Control));
    lookupClick->setToolTip(
        tr("The first looks a declaration up, the second a definition. Some desktops take clicks with "
           "Alt for themselves."));
    completion->setObjectName("completion");
    completion->addItem(tr("Meanings for members and locals, tags for other names"),
                        static_cast<int>(Completion::Both));
    completion->addItem(tr("Meanings"), static_cast<int>(Completion::Editor));
    completion->addItem(tr("Tags"), static_cast<int>(Completion::Plugin));
    completion->addItem(tr("Nothing while typing"), static_cast<int>(Completion::None));
    keepsTags->setObjectName("keepsTags");
    keepsTags->addItem(tr("When there is one"), static_cast<int>(KeepTags::Present));
    keepsTags->addItem(tr("Always"), static_cast<int>(KeepTags::Always));
    keepsTags->addItem(tr("Never"), static_cast<int>(KeepTags::Never));
    fontSize->setObjectName("fontSize");
    tabWidth->setObjectName("tabWidth");
    for (QComboBox* box : {font, colours, lookupClick, completion, keepsTags})
        connect(box, &QComboBox::currentIndexChanged, this, &EditorPages::Tell);
    for (QSpinBox* box : {fontSize, tabWidth})
        connect(box, &QSpinBox::valueChanged, this, &EditorPages::Tell);
    connect(keys, &KeyTable::Changed, this, &EditorPages::Tell);
}

void EditorPages::SetMenuItems(const std::vector<MenuItem>& items)
{
    keys->SetMenuItems(items);
}

void EditorPages::SetCommands(const std::vector<std::string>& names)
{
    const PreferenceValues values = Values();
    keys->SetCommands(names);
    keys->SetValues(values.keys);
}

PreferenceValues EditorPages::Values() const
{
    PreferenceValues values;
    values.font = font->currentData().toString().toStdString();
    values.fontSize = fontSize->value();
    values.tabWidth = tabWidth->value();
    values.indentsWithTabs = indentsWithTabs->isChecked();
    values.wrapsLines = wrapsLines->isChecked();
    values.showsBlanks = showsBlanks->isChecked();
    values.showsGuides = showsGuides->isChecked();
    values.restoresSession = restoresSession->isChecked();
    values.showsScopes = showsScopes->isChecked();
    values.followsConfig = followsConfig->isChecked();
    values.colours = Chosen<Colours>(colours);
    values.command = Chosen<Modifier>(command);
    values.control = Chosen<Modifier>(control);
    values.option = Chosen<Modifier>(option);
    values.lookupClick = Chosen<LookupClick>(lookupClick);
    values.jumpsByMeaning = jumpsByMeaning->isChecked();
    values.completion = Chosen<Completion>(completion);
    values.keepsTags = Chosen<KeepTags>(keepsTags);
    values.understandsNames = understandsNames;
    values.keys = keys->Values();
    values.menuKeys = keys->ItemValues();
    return values;
}

void EditorPages::SetValues(const PreferenceValues& values)
{
    isSetting = true;
    ShowFont(QString::fromStdString(values.font));
    fontSize->setValue(values.fontSize);
    tabWidth->setValue(values.tabWidth);
    indentsWithTabs->setChecked(values.indentsWithTabs);
    wrapsLines->setChecked(values.wrapsLines);
    showsBlanks->setChecked(values.showsBlanks);
    showsGuides->setChecked(values.showsGuides);
    showsScopes->setVisible(values.understandsNames);
    showsScopes->setChecked(values.showsScopes);
    followsConfig->setChecked(values.followsConfig);
    restoresSession->setChecked(values.restoresSession);
    Choose(colours, values.colours);
    Choose(command, values.command);
    Choose(control, values.control);
    Choose(option, values.option);
    Choose(lookupClick, values.lookupClick);
    understandsNames = values.understandsNames;
    names->setRowVisible(jumpsByMeaning, understandsNames);
    names->setRowVisible(completion, understandsNames);
    Choose(completion, values.completion);
    names->setRowVisible(keepsTags, understandsNames);
    Choose(keepsTags, values.keepsTags);
    jumpsByMeaning->setChecked(values.jumpsByMeaning);
    keys->SetUsual(DefaultKeys(values.HasMeaningKeys()));
    keys->SetItemValues(values.menuKeys);
    keys->SetValues(values.keys);
    isSetting = false;
    RememberModifiers();
}

// The commands' keys follow, where the user has not chosen them.
void EditorPages::ChooseJumps()
{
    if (isSetting)
        return;
    PreferenceValues values = Values();
    const bool before = understandsNames && !values.jumpsByMeaning;
    values.keys = WithDefaults(values.keys, before, values.HasMeaningKeys());
    SetValues(values);
}

void EditorPages::ShowFont(const QString& family)
{
    if (font->findData(family) < 0)
        font->addItem(tr("%1 (not installed)").arg(family), family);
    font->setCurrentIndex(font->findData(family));
}

QCheckBox* EditorPages::Switch(const QString& text)
{
    auto* box = new QCheckBox(text);
    connect(box, &QCheckBox::toggled, this, &EditorPages::Tell);
    return box;
}

QComboBox* EditorPages::ModifierBox(const QString& name)
{
    auto* box = new QComboBox;
    box->setObjectName(name);
    box->addItem(tr("Control"), static_cast<int>(Modifier::Control));
    box->addItem(tr("Alt"), static_cast<int>(Modifier::Alt));
    box->addItem(tr("Super"), static_cast<int>(Modifier::Super));
    connect(box, &QComboBox::currentIndexChanged, this, [this, box] { TakeModifierFromOthers(box); });
    return box;
}

// No key stands for two modifiers: the modifier that had the chosen key gets the key that was given up.
void EditorPages::TakeModifierFromOthers(QComboBox* chosen)
{
    if (isSetting)
        return;
    isSetting = true;
    for (QComboBox* box : {command, control, option})
        if (box != chosen && box->currentIndex() == chosen->currentIndex())
            box->setCurrentIndex(modifiers[chosen]);
    isSetting = false;
    RememberModifiers();
    Tell();
}

void EditorPages::RememberModifiers()
{
    for (const QComboBox* box : {command, control, option})
        modifiers[box] = box->currentIndex();
}

void EditorPages::Tell()
{
    if (!isSetting)
        emit Changed();
}

} // namespace wren
