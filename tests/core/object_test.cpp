#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/core/object.h"
#include "tests/core/fake_objects.h"

namespace {

using fake::FakeControl;
using fake::FakeLabel;
using fake::FakeRadio;
using platform::Form;
using platform::Object;

TEST(ClassInfo, FindPropertyNeedsTheWholeNameAndPrefersOwnTableThenWalksBases) {
    const auto& label = FakeLabel::StaticClass();
    const auto* value = label.FindProperty("value");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->form, Form::String);
    EXPECT_EQ(FakeRadio::StaticClass().FindProperty("VALUE")->form, Form::Boolean);
    EXPECT_EQ(FakeControl::StaticClass().FindProperty("Value")->form, Form::Integer);

    const auto* multiLine = label.FindProperty("Multiline");
    ASSERT_NE(multiLine, nullptr);
    EXPECT_EQ(multiLine->name, "MultiLine");
    EXPECT_EQ(multiLine, FakeControl::StaticClass().FindProperty("MULTILINE"));

    for (const char* partial : {"Lef", "Lefts", ""}) {  // the whole name or nothing
        EXPECT_EQ(FakeControl::StaticClass().FindProperty(partial), nullptr) << partial;
    }
    EXPECT_EQ(Object::StaticClass().FindProperty("Left"), nullptr);
}

TEST(ClassInfo, IsAFollowsTheBaseChain) {
    const auto& object = Object::StaticClass();
    EXPECT_EQ(object.name, "Object");
    EXPECT_EQ(object.base, nullptr);
    EXPECT_TRUE(object.properties.empty());

    EXPECT_TRUE(FakeLabel::StaticClass().IsA(FakeLabel::StaticClass()));
    EXPECT_TRUE(FakeLabel::StaticClass().IsA(FakeControl::StaticClass()));
    EXPECT_TRUE(FakeLabel::StaticClass().IsA(object));
    EXPECT_FALSE(FakeControl::StaticClass().IsA(FakeLabel::StaticClass()));
    EXPECT_FALSE(FakeRadio::StaticClass().IsA(FakeLabel::StaticClass()));
}

TEST(ClassInfo, StoredOnlyKeepsItsFormAndChangesNothing) {
    const auto* composite = FakeControl::StaticClass().FindProperty("Composite");
    ASSERT_NE(composite, nullptr);
    EXPECT_EQ(composite->form, Form::Boolean);
    FakeControl control;
    composite->set(control, platform::PropertyValue(true));
    EXPECT_TRUE(control.applied.empty());
}

TEST(RuntimeCheckCast, NilWrongClassAndRightClass) {
    EXPECT_THROW(platform::RuntimeCheckCast<FakeLabel>(nullptr), platform::NilObjectException);

    FakeRadio radio;
    try {
        platform::RuntimeCheckCast<FakeLabel>(&radio);
        ADD_FAILURE() << "a radio was cast to a label";
    } catch (const platform::IllegalCastException& e) {
        EXPECT_EQ(std::string(e.what()), "FakeRadio is no FakeLabel");
    }

    FakeLabel label;
    Object* asObject = &label;
    EXPECT_EQ(&platform::RuntimeCheckCast<FakeLabel>(asObject), &label);
    EXPECT_EQ(&platform::RuntimeCheckCast<FakeControl>(asObject), &label);
}

TEST(WeakRef, ReadsNilOnceTheObjectIsGone) {
    EXPECT_EQ(platform::WeakRef().Value(), nullptr);
    EXPECT_EQ(platform::WeakRef(nullptr).Value(), nullptr);

    auto label = std::make_unique<FakeLabel>();
    const platform::WeakRef ref(label.get());
    const platform::WeakRef copy = ref;
    EXPECT_EQ(ref.Value(), label.get());
    label.reset();
    EXPECT_EQ(ref.Value(), nullptr);
    EXPECT_EQ(copy.Value(), nullptr);
}

}  // namespace
